"""Settings changed by another process redraw the running item."""

import unittest

from rig.case import ARTIFACTS, DeskCase

# In this order, each on top of the ones before; the last one shows in the text alone.
CHANGES = [
    ("largeIcon", "true"),
    ("oldIconStyle", "true"),
    ("showPercentageSignInIcon", "false"),
    ("showPercentage", "false"),
    ("textOnlyIcon", "true"),
    ("smallMenuBarText", "false"),
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


if __name__ == "__main__":
    unittest.main()
