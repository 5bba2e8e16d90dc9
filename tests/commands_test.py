"""The commands that print, draw or store and end: status, settings, render, demo, and wrong use."""

import json
import pathlib
import struct
import time
import unittest

from rig.case import CommandCase
from rig.kelvane import preferences_file
from rig.supplies import SupplyDirectory

def png_size(path):
    """Width and height in a PNG's header."""
    head = pathlib.Path(path).read_bytes()[:24]
    if head[:8] != b"\x89PNG\r\n\x1a\n":
        raise ValueError(f"{path} is no PNG")
    return struct.unpack(">II", head[16:24])


class StatusTest(CommandCase):
    def test_line_for_bars_and_for_people(self):
        tree = SupplyDirectory(self.directory / "supplies")
        tree.set("online=1", "status=Not charging", "capacity=80")
        self.environment.update(KELVANE_POWER_SUPPLY=str(tree.path), KELVANE_UPOWER="no")
        status = json.loads(self.run_kelvane("status", "--json").stdout)
        self.assertTrue(status.pop("text") and status.pop("tooltip"))
        self.assertEqual(status, {"class": "plugged", "percentage": 80})
        self.assertIn("80", self.run_kelvane("status").stdout)

    def test_without_a_battery_a_bar_gets_nothing_to_show(self):
        empty = self.directory / "empty"
        empty.mkdir()
        source = ("--no-upower", "--power-supply", str(empty))
        done = self.run_kelvane(*source, "status", "--json", code=1)
        self.assertEqual((done.stdout, done.stderr),
                         ("", "kelvane: this computer has no battery\n"))


class SettingsTest(CommandCase):
    def test_what_is_set_is_got_and_kept_in_a_private_file(self):
        for key, value in [("largeIcon", True), ("notifyAtPercentagesOnBattery", [0.1, 0.2])]:
            self.run_kelvane("settings", "set", key, json.dumps(value))
            got = self.run_kelvane("settings", "get", key).stdout
            self.assertEqual(json.loads(got), value)
        file = preferences_file(self.environment)
        self.assertEqual(file.stat().st_mode & 0o777, 0o600)
        before = file.read_bytes()
        for words in [("get", "none"), ("set", "none", "true"), ("set", "largeIcon", "7")]:
            self.run_kelvane("settings", *words, code=2)
        self.assertEqual(file.read_bytes(), before)


class RenderTest(CommandCase):
    def test_pictures_follow_battery_scale_and_shape(self):
        sizes = {}
        for words in [
            ("--level", "0.57"),
            ("--level", "0.08"),
            ("--level", "1", "--on-power"),
            ("--level", "0.57", "--scale", "2"),
            ("--level", "0.57", "--shape", "square"),
        ]:
            file = self.directory / f"{len(sizes)}.png"
            self.run_kelvane("render", "--out", str(file), *words)
            sizes[file.read_bytes()] = png_size(file)
        (width, height), _low, _full, twice, square = sizes.values()
        self.assertGreater(width, height)
        self.assertEqual(twice, (2 * width, 2 * height))
        self.assertEqual(*square)

    def test_unwritable_file_is_said(self):
        out = str(self.directory / "no-such-folder" / "x.png")
        self.run_kelvane("render", "--out", out, "--level", "0.5", code=1)


class DemoTest(CommandCase):
    def test_ends_by_itself_and_leaves_what_happened_in_words_and_pictures(self):
        began = time.monotonic()
        done = self.run_kelvane("demo", seconds=40)
        took = time.monotonic() - began
        print(f"demo: {took:.1f} s")
        self.assertLess(took, 30)
        self.assertEqual(done.stderr, "")
        told = [line.strip() for line in done.stdout.splitlines()]
        folder = pathlib.Path(told[-1].split()[-1])
        pictures = list(folder.glob("**/*.png"))
        self.assertGreaterEqual(len(pictures), 5)
        page = (folder / "index.html").read_text()
        for picture in pictures:
            self.assertTrue(min(png_size(picture)) > 0)
            self.assertIn(picture.name, page)

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
