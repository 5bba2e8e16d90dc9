"""The item on every desktop: registered, seen on the screen, following the battery.

The desktop is named by $KELVANE_HOST.
"""

import contextlib
import os
import unittest

from rig import screen
from rig.case import ARTIFACTS, DeskCase
from rig.menu import INTERFACE as MENU
from rig.menu import Menu
from rig.monitor import Monitor
from rig.portal import Portal
from rig.processes import wait_until

HOST = os.environ["KELVANE_HOST"]
PANEL = "1280x40+0+0"
BELOW_THE_PANEL = 40
SCREEN = "1280x720+0+0"
LEFT, RIGHT = 1, 3  # Buttons; the right one has the host open the menu everywhere.
LEAVES_LEFT_TO_US = HOST in ("lxqt", "mate", "plasma")
WITHOUT_KEYS = ("waybar",)  # Its menus get none on sway; a click beside them closes them.
TELLS_OF_OPENING = ("AboutToShow", "AboutToShowGroup", "Event", "EventGroup")
# The colour of the glyph under a light and a dark colour scheme. Xfce's panel has its own switch;
# what colour LXQt's and Waybar's have is not known, so the glyph is light on a backing.
IS_LIGHT = {
    "xfce": (False, False), "mate": (False, True), "plasma": (False, True),
    "gnome": (True, True), "lxqt": (True, True), "waybar": (True, True),
}
KEEPS_WIDTH = HOST in ("mate", "waybar")  # The others squeeze a wide picture into a square.


class PanelCase(DeskCase):
    host = HOST

    def pixels_of_the_item(self):
        looks = [self.settled("before")]
        return wait_until(lambda: self.look_at_the_item(looks), "the item on the screen", 30)

    def look_at_the_item(self, looks):
        """The item's pixels, or nothing when a panel still at its start changed meanwhile.

        The last of the `looks` is the panel without the item; the one after the item is added.
        """
        kelvane = self.start_kelvane()
        kelvane.item()
        # GNOME shows an item for half a second after its end: then the look before is of one too.
        with contextlib.suppress(TimeoutError):
            self.wait_for_change(looks[-1], 3)
        shown = self.settled("item")
        kelvane.terminate()
        kelvane.wait_until_gone()
        self.wait_for_change(shown)
        looks.append(self.settled("after"))
        pixels = screen.shown_only_in(shown, looks[-2], looks[-1])
        pixels = screen.outermost_group(pixels, self.desk.host.items_on_left)
        return pixels if len(pixels) > 40 else {}

    def look_without(self, pixels):
        """The settled panel, once it no longer shows those pixels."""
        seen = self.settled("before")
        kept = sum(seen[y][x] == color for (x, y), color in pixels.items())
        return seen if 10 * kept < len(pixels) else None

    def shows_a_menu(self, name, closed):
        """The bounds of what differs from the screen without it, if that is like a menu.

        The panel's rows are left out, as its clock goes on.
        """
        changed = screen.shown_only_in(self.shot(name, SCREEN), closed, closed)
        changed = {at: color for at, color in changed.items() if at[1] >= BELOW_THE_PANEL}
        if not changed:
            return None
        left, top, right, bottom = screen.bounds(changed)
        width, height = right - left + 1, bottom - top + 1
        is_menu = min(width, height) > 100 and len(changed) > 0.7 * width * height
        return (left, top, right, bottom) if is_menu else None

    def title_in_focus(self):
        return self.desk.x("xdotool", "getwindowfocus", "getwindowname").strip()

    def shot(self, name, area=PANEL):
        path = ARTIFACTS / f"screen-{HOST}-{name}.png"
        self.desk.screenshot(path, area)
        return screen.load(path)

    def settled(self, name):
        """The panel once two looks at it give the same."""
        looks = [self.shot(name)]

        def same_again():
            looks.append(self.shot(name))
            return looks[-1] == looks[-2]

        wait_until(same_again, "the panel to settle", interval=0.3)
        return looks[-1]

    def wait_for_change(self, seen, seconds=15):
        wait_until(lambda: self.shot("now") != seen, "the panel to change", seconds, interval=0.2)


class DesktopTest(PanelCase):
    def test_registered_and_following_the_battery(self):
        item = self.start_kelvane().item()
        self.assertTrue(any("57" in label for label in Menu.of(item).labels()))
        self.changes_picture(item, lambda: self.power.set("capacity=23"), "23 %")
        picture = self.changes_picture(item, self.power.plug, "the adapter")
        picture.save(ARTIFACTS / f"item-{HOST}.png")
        self.assertEqual(picture.width > picture.height, KEEPS_WIDTH, picture)

    def test_colour_goes_with_the_colour_scheme(self):
        under_light, under_dark = IS_LIGHT[HOST]
        with Portal(self.desk.environment["DBUS_SESSION_BUS_ADDRESS"]) as portal:
            item = self.start_kelvane().item()
            is_light = lambda expected: item.picture().is_light() == expected
            wait_until(lambda: is_light(under_light), "the light scheme's colour")
            portal.set_dark(True)
            wait_until(lambda: is_light(under_dark), "the dark scheme's colour")

    def test_seen_on_the_screen(self):
        pixels = self.pixels_of_the_item()
        left, top, right, bottom = screen.bounds(pixels)
        self.assertTrue(10 <= right - left <= 80, f"from {left} to {right}")
        self.assertTrue(7 <= bottom - top <= 40, f"from {top} to {bottom}")
        self.assertGreater(len(set(pixels.values())), 2)

    def test_back_after_the_panel_crashed(self):
        kelvane = self.start_kelvane()
        self.assertTrue(kelvane.item())
        self.desk.kill_panel()
        self.desk.start_panel()
        self.assertTrue(kelvane.item(seconds=10).picture())

    def test_the_doctor_finds_the_item_in_the_tray(self):
        kelvane = self.start_kelvane()
        item = kelvane.item()
        doctor = kelvane.run("doctor")
        self.assertEqual(doctor.returncode, 0, doctor.stdout)
        self.assertRegex(doctor.stdout, rf"(?mi)^ok +tray +{HOST} ")
        sizes = " and ".join(f"{each.width}×{each.height}" for each in item.pictures())
        self.assertRegex(doctor.stdout,
                         f"(?m)^ok +Kelvane +it runs, the tray has its item: {sizes} pixels$")


class MenuTest(PanelCase):
    """On a desk of its own, as GNOME goes on showing an item for a while after its end."""

    def test_menu_opens_at_a_click_and_closes_again(self):
        pixels = self.pixels_of_the_item()
        left, top, right, bottom = screen.bounds(pixels)
        before = wait_until(lambda: self.look_without(pixels), "the end of the item before")
        item = self.start_kelvane(windows=True).item()
        self.wait_for_change(before)
        self.settled("item")
        closed = self.shot("without-menu", SCREEN)
        place = (left + right) // 2, (top + bottom) // 2

        def click(button):
            # As by hand: a panel that still lights up below the pointer may miss the click.
            self.desk.pointer(*place)
            self.settled("pointed-at")
            self.desk.pointer(*place, button)

        for button in LEFT, RIGHT:
            is_ours = LEAVES_LEFT_TO_US and button == LEFT
            with Monitor(self.desk.environment["DBUS_SESSION_BUS_ADDRESS"], MENU) as monitor:
                click(button)
                if is_ours:
                    wait_until(lambda: self.title_in_focus() == "Kelvane", "our menu's focus")
                else:
                    wait_until(lambda: monitor.calls(*TELLS_OF_OPENING), "a word of the opening")
                menu = wait_until(lambda: self.shows_a_menu(f"menu-{button}", closed), "the menu")
            if is_ours:
                self.assertTrue(menu[0] <= right and left <= menu[2], f"{menu} {left} {right}")
                self.assertEqual(menu[1], BELOW_THE_PANEL, f"{menu} {bottom}")
                click(LEFT)
            elif HOST in WITHOUT_KEYS:
                self.desk.pointer(300, 500, LEFT)
            else:
                self.desk.key("Escape")
            wait_until(lambda: not self.shows_a_menu("menu-closed", closed), "the menu's end")
        # What hosts without menus of their own do; and again, which closes it.
        self.desk.pointer(450, 10)  # On a bare place of the panel, away from what lights up.
        item.call("ContextMenu", 0, 0)
        left, _, right, _ = wait_until(lambda: self.shows_a_menu("menu-asked", closed), "our menu")
        self.assertLess(right - left, 400)
        item.call("ContextMenu", 0, 0)
        wait_until(lambda: not self.shows_a_menu("menu-closed", closed), "our menu's end")


if __name__ == "__main__":
    unittest.main()
