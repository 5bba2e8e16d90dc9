"""The commands that print or draw and end: status, render, demo, and wrong use of any."""

import json
import pathlib
import struct
import time
import unittest

from rig.case import CommandCase
from rig.supplies import SupplyDirectory

STATES = [
    # changes of the tree                                     class          percentage
    ((), "discharging", 57),
    (("capacity=15",), "early", 15),
    (("capacity=3",), "final", 3),
    (("online=1", "status=Charging"), "charging", 57),
    (("online=1", "status=Charging", "capacity=3"), "charging", 3),
    (("online=1", "status=Not charging", "capacity=80"), "plugged", 80),
    (("online=1", "status=Full", "capacity=100"), "full", 100),
]


def png_size(path):
    """Width and height in a PNG's header."""
    head = pathlib.Path(path).read_bytes()[:24]
    if head[:8] != b"\x89PNG\r\n\x1a\n":
        raise ValueError(f"{path} is no PNG")
    return struct.unpack(">II", head[16:24])


class StatusTest(CommandCase):
    def test_json_line_for_bars(self):
        for number, (changes, state, percentage) in enumerate(STATES):
            tree = SupplyDirectory(self.directory / f"supplies-{number}")
            tree.set(*changes)
            with self.subTest(changes=changes):
                source = ("--no-upower", "--power-supply", str(tree.path))
                lines = self.run_kelvane(*source, "status", "--json").stdout.splitlines()
                self.assertEqual(len(lines), 1)
                status = json.loads(lines[0])
                self.assertEqual(set(status), {"text", "tooltip", "class", "percentage"})
                self.assertEqual((status["class"], status["percentage"]), (state, percentage))
                self.assertTrue(status["text"] and status["tooltip"])

    def test_plain_line_tells_the_level(self):
        tree = SupplyDirectory(self.directory / "supplies")
        self.environment.update(KELVANE_POWER_SUPPLY=str(tree.path), KELVANE_UPOWER="no")
        self.assertIn("57", self.run_kelvane("status").stdout)

    def test_garbage_in_the_tree_is_no_reading(self):
        tree = SupplyDirectory(self.directory / "supplies")
        tree.set("capacity=garbage", "energy_now=-3", "energy_full=99999999999999999999",
                 "status=", "power_now=1e9", "voltage_now=\x00")
        source = ("--no-upower", "--power-supply", str(tree.path))
        status = json.loads(self.run_kelvane(*source, "status", "--json").stdout)
        self.assertIn(status["percentage"], (None, *range(101)))


    def test_without_a_battery_a_bar_gets_nothing_to_show(self):
        empty = self.directory / "empty"
        empty.mkdir()
        source = ("--no-upower", "--power-supply", str(empty))
        done = self.run_kelvane(*source, "status", "--json", code=1)
        self.assertEqual((done.stdout, done.stderr), ("", "kelvane: this computer has no battery\n"))


class RenderTest(CommandCase):
    def test_size_follows_shape_and_scale(self):
        sizes = {}
        for shape in ("wide", "square"):
            for scale in (1, 2):
                file = self.directory / f"{shape}-{scale}.png"
                self.run_kelvane("render", "--out", str(file), "--scale", str(scale),
                                 "--shape", shape, "--level", "0.57")
                sizes[shape, scale] = png_size(file)
        for shape in ("wide", "square"):
            once = sizes[shape, 1]
            self.assertEqual(sizes[shape, 2], (2 * once[0], 2 * once[1]))
        self.assertEqual(*sizes["square", 1])
        self.assertGreater(sizes["wide", 1][0], sizes["wide", 1][1])

    def test_stated_batteries_give_different_pictures(self):
        pictures = set()
        batteries = [("--level", "0.57"), ("--level", "0.08"), ("--level", "1", "--on-power")]
        for number, battery in enumerate(batteries):
            file = self.directory / f"{number}.png"
            self.run_kelvane("render", "--out", str(file), *battery)
            pictures.add(file.read_bytes())
        self.assertEqual(len(pictures), len(batteries))

    def test_unwritable_file_is_said(self):
        out = str(self.directory / "no-such-folder" / "x.png")
        self.run_kelvane("render", "--out", out, "--level", "0.5", code=1)


class DemoTest(CommandCase):
    def test_ends_by_itself_and_leaves_pictures(self):
        began = time.monotonic()
        done = self.run_kelvane("demo", seconds=40)
        took = time.monotonic() - began
        print(f"demo: {took:.1f} s")
        self.assertLess(took, 30)
        folder = pathlib.Path(done.stdout.splitlines()[-1].split()[-1])
        self.assertTrue((folder / "index.html").stat().st_size)
        pictures = list(folder.glob("**/*.png"))
        self.assertGreaterEqual(len(pictures), 5)
        page = (folder / "index.html").read_text()
        for picture in pictures:
            self.assertTrue(min(png_size(picture)) > 0)
            self.assertIn(picture.name, page)
        self.assertEqual(done.stderr, "")

    def test_tells_notices_alerts_and_the_menu_as_they_happen(self):
        told = [line.strip() for line in self.run_kelvane("demo", seconds=40).stdout.splitlines()]
        happened = [line for line in told if line.startswith(("notice:", "alert:"))]
        alert = happened.pop(1)
        self.assertIn("is running out of battery", alert)
        self.assertEqual(happened, [
            "notice: 20%",
            "notice: taken away",
            "alert:  closed",
            "notice: 80%",
            "notice: Fully Charged - Your Mac's battery is at 100%",
        ])
        # The alert stays until the adapter is there.
        self.assertGreater(told.index("alert:  closed"), told.index("Plugged in"))
        self.assertLess(told.index(alert), told.index("Plugged in"))
        menus = [line for line in told if line.startswith("menu:")]
        self.assertIn("Calculating Time Remaining… | Battery", menus[0])
        self.assertIn("Fully Charged | Power Adapter", menus[-1])
        self.assertTrue(any("FAQ" in line for line in told))


class WrongUseTest(CommandCase):
    def test_wrong_use_is_told_apart_from_failure(self):
        for words in [
            ("no-such-command",),
            ("status", "--no-such-option"),
            ("render",),
            ("render", "--out", "x.png", "--shape", "round"),
            ("settings",),
        ]:
            with self.subTest(words=words):
                self.run_kelvane(*words, code=2)


if __name__ == "__main__":
    unittest.main()
