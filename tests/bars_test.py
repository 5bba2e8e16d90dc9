"""The examples for bars that run commands, with the program, and in the document about them."""

import json
import os
import pathlib
import re
import subprocess
import unittest

from rig.case import CommandCase
from rig.kelvane import program
from rig.supplies import SupplyDirectory

DOCUMENTS = pathlib.Path(__file__).resolve().parent.parent / "docs"
EXAMPLES = DOCUMENTS / "examples"
CLASSES = ["charging", "discharging", "early", "final", "full", "plugged"]

# Prints what i3status does: a head, then a line of blocks for each look.
_I3STATUS = """#!/bin/sh
[ "$*" = "-c file" ] || exit 1
printf '{"version":1}\\n[\\n'
printf '[{"name":"tztime","full_text":"10\\\\\\\\n00"}]\\n'
printf ',[{"name":"tztime","full_text":"10:01"}]\\n'
"""
CLOCK = [{"name": "tztime", "full_text": r"10\n00"}, {"name": "tztime", "full_text": "10:01"}]


class BarsTest(CommandCase):
    def setUp(self):
        super().setUp()
        self.tree = SupplyDirectory(self.directory / "supplies")
        folder = self.directory / "bin"
        folder.mkdir()
        (folder / "kelvane").symlink_to(program())
        (folder / "i3status").write_text(_I3STATUS)
        (folder / "i3status").chmod(0o755)
        self.environment.update(
            KELVANE_POWER_SUPPLY=str(self.tree.path), KELVANE_UPOWER="no",
            PATH=f"{folder}:{os.environ['PATH']}",
        )

    def said(self, *command):
        return subprocess.run(command, env=self.environment, capture_output=True, text=True,
                              timeout=20, check=True).stdout

    def test_waybar(self):
        text = (EXAMPLES / "waybar.jsonc").read_text()
        bar = json.loads(re.sub(r"^\s*//.*$", "", text, flags=re.MULTILINE))
        module = bar["custom/battery"]
        self.assertIn("custom/battery", bar["modules-right"])
        self.assertEqual(module["return-type"], "json")
        self.assertEqual(json.loads(self.said("sh", "-c", module["exec"]))["percentage"], 57)
        styled = re.findall(r"#custom-battery\.(\w+)", (EXAMPLES / "waybar.css").read_text())
        self.assertEqual(sorted(styled), CLASSES)
        row = re.search(r"^\| `class` \|(.*)$", self.document(), re.MULTILINE)[1]
        self.assertEqual(sorted(re.findall(r"`(\w+)`", row)), CLASSES)

    def test_i3status(self):
        for change, look in [("capacity=57", {}), ("capacity=15", {"color": "#e08a00"}),
                             ("capacity=3", {"urgent": True})]:
            with self.subTest(change=change):
                self.tree.set(change)
                lines = self.said(EXAMPLES / "i3status-kelvane", "-c", "file").splitlines()
                self.assertEqual(lines[:2], ['{"version":1}', "["])
                self.assertEqual([line[0] for line in lines[2:]], ["[", ","])
                for line, clock in zip(lines[2:], CLOCK, strict=True):
                    battery, *others = json.loads(line.removeprefix(","))
                    shown = {"name": "kelvane", "full_text": f"{change[9:]}%", **look}
                    # What the bar passes over is not judged.
                    self.assertEqual({**battery, **shown}, battery)
                    self.assertEqual("urgent" in battery, "urgent" in look)
                    self.assertEqual(others, [clock])

    def test_when_kelvane_fails_i3status_stays(self):
        kelvane = self.directory / "bin/kelvane"
        kelvane.unlink()
        kelvane.symlink_to("/bin/false")
        lines = self.said(EXAMPLES / "i3status-kelvane", "-c", "file").splitlines()
        self.assertEqual([json.loads(line.removeprefix(",")) for line in lines[2:]],
                         [[clock] for clock in CLOCK])

    def test_the_document_quotes_the_files(self):
        for file in sorted(EXAMPLES.iterdir()):
            self.assertIn(f"\n{file.read_text()}```", self.document(), file.name)

    def document(self):
        return (DOCUMENTS / "bars.md").read_text()


if __name__ == "__main__":
    unittest.main()
