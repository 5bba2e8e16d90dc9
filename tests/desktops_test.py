"""The item on every light desktop: registered, seen on the screen, following the battery.

The desktop is named by $KELVANE_HOST.
"""

import os
import unittest

from rig import screen
from rig.case import ARTIFACTS, DeskCase
from rig.menu import Menu
from rig.processes import wait_until

HOST = os.environ["KELVANE_HOST"]
PANEL = "1280x40+0+0"
KEEPS_WIDTH = HOST in ("mate", "waybar")  # The others squeeze a wide picture into a square.


class DesktopTest(DeskCase):
    host = HOST

    def test_registered_and_following_the_battery(self):
        item = self.start_kelvane().item()
        self.assertTrue(any("57" in label for label in Menu.of(item).labels()))
        self.changes_picture(item, lambda: self.power.set("capacity=23"), "23 %")
        picture = self.changes_picture(item, self.power.plug, "the adapter")
        picture.save(ARTIFACTS / f"item-{HOST}.png")
        self.assertEqual(picture.width > picture.height, KEEPS_WIDTH, picture)

    def test_seen_on_the_screen(self):
        before = self.settled("before")
        kelvane = self.start_kelvane()
        kelvane.item()
        self.wait_for_change(before)
        shown = self.settled("item")
        kelvane.terminate()
        kelvane.wait_until_gone()
        self.wait_for_change(shown)
        pixels = screen.shown_only_in(shown, before, self.settled("after"))
        pixels = screen.rightmost_group(pixels)
        self.assertGreater(len(pixels), 40)
        xs, ys = [x for x, _ in pixels], [y for _, y in pixels]
        self.assertTrue(10 <= max(xs) - min(xs) <= 80, f"from {min(xs)} to {max(xs)}")
        self.assertTrue(7 <= max(ys) - min(ys) <= 40, f"from {min(ys)} to {max(ys)}")
        self.assertGreater(len(set(pixels.values())), 2)

    def test_back_after_the_panel_crashed(self):
        kelvane = self.start_kelvane()
        self.assertTrue(kelvane.item())
        self.desk.kill_panel()
        self.desk.start_panel()
        self.assertTrue(kelvane.item(seconds=10).picture())

    def shot(self, name):
        path = ARTIFACTS / f"screen-{HOST}-{name}.png"
        self.desk.screenshot(path, PANEL)
        return screen.load(path)

    def settled(self, name):
        """The panel once two looks at it give the same."""
        looks = [self.shot(name)]

        def same_again():
            looks.append(self.shot(name))
            return looks[-1] == looks[-2]

        wait_until(same_again, "the panel to settle", interval=0.3)
        return looks[-1]

    def wait_for_change(self, seen):
        wait_until(lambda: self.shot("now") != seen, "the panel to change", interval=0.2)


if __name__ == "__main__":
    unittest.main()
