"""Settings changed by another process, and a panel that turns dark, redraw the running item."""

import subprocess
import unittest

from rig.case import ARTIFACTS, DeskCase

# In this order, each on top of the ones before.
CHANGES = [
    ("largeIcon", "true"),
    ("oldIconStyle", "true"),
    ("showPercentageSignInIcon", "false"),
    ("showPercentage", "false"),
    ("textOnlyIcon", "true"),
    ("smallMenuBarText", "false"),
    ("trayIconShape", "wide"),
    ("trayIconColor", "light"),
]


class AppearanceTest(DeskCase):
    host = "xfce"

    def test_each_appearance_key_redraws_the_item(self):
        kelvane = self.start_kelvane()
        item = kelvane.item()
        for number, (key, value) in enumerate(CHANGES, start=1):
            with self.subTest(key):
                change = lambda key=key, value=value: kelvane.set(key, value)
                picture = self.changes_picture(item, change, f"{key} = {value}")
                picture.save(ARTIFACTS / f"appearance-{number}-{key}.png")

    def test_same_value_again_draws_nothing(self):
        kelvane = self.start_kelvane()
        item = kelvane.item()
        said = item.record()
        kelvane.set("largeIcon", "false")
        kelvane.set("textOnlyIcon", "true")
        said.wait_for("NewIcon")
        item.property("Id")
        self.assertEqual(said.members().count("NewIcon"), 1, said.members())

    def test_panel_that_turns_dark_and_light_again(self):
        item = self.start_kelvane().item()
        for dark in (True, False):
            picture = self.changes_picture(item, lambda dark=dark: self.turn(dark), "the switch")
            self.assertEqual(picture.is_light(), dark)

    def turn(self, dark):
        command = ["xfconf-query", "-c", "xfce4-panel", "-p", "/panels/dark-mode"]
        value = ["-n", "-t", "bool", "-s", str(dark).lower()]
        subprocess.run([*command, *value], env=self.desk.environment, check=True)


if __name__ == "__main__":
    unittest.main()
