"""The item's menu where a host leaves the click to us: a window, and what waits until it closes."""

import unittest

from rig.menu import Menu
from rig.processes import wait_until
from rig.window_case import WindowCase, unless_gone

KILLED = "kelvane: the window program ended by Killed"
COMMANDS = ["Preferences…", "More"]
ON_OPTION = ["Condition: Good", "Health: 95%"]


class ClickedMenuTest(WindowCase):
    def click(self, method="Activate"):
        self.item.call(method, 900, 16)

    def open(self, *method):
        self.click(*method)
        return self.seen.find("menu", "Kelvane")

    def lines(self):
        menu = self.seen.look("menu", "Kelvane")
        names = [each.name for each in menu.descendants() if each.role == "menu item"]
        return [name.replace("﹪", "%") for name in names]

    def wait_for_lines(self, *expected):
        wait_until(lambda: unless_gone(self.lines) == list(expected),
                   lambda: f"{expected}: {self.lines()}", 5)

    def test_shows_the_menu_and_does_what_is_chosen(self):
        self.power.set("online=1", "status=Not charging", "capacity=80")
        self.item = self.start()
        wait_until(lambda: "Not Charging" in Menu.of(self.item).labels(), "the change")
        for method in "Activate", "ContextMenu":
            battery = ["80%", "Not Charging", "Power Adapter"]
            menu = self.open(method)
            self.wait_for_lines(*battery, *COMMANDS)
            self.desk.hold("Alt_L")
            self.wait_for_lines(*battery, *ON_OPTION, *COMMANDS)
            self.desk.hold("Alt_L", False)
            self.wait_for_lines(*battery, *COMMANDS)
            self.click(method)
            self.wait_until_closed(menu)
        self.wait_for_no_windows()
        self.open()
        program = self.window_programs()
        self.desk.key("Down", "Return", window="Kelvane")
        self.seen.find("frame", "Kelvane Settings")
        self.assertEqual(self.window_programs(), program)
        menu = self.open()
        self.desk.key("m", "Right", "a", "Return", window="Kelvane")
        self.wait_until_closed(menu)
        self.seen.find("dialog", "About Kelvane")
        self.open()  # Which does not keep it from ending.

    def test_holds_the_changes_back_until_it_is_closed(self):
        self.item = self.start_and_settle(says=[KILLED])
        for capacity, (name, close) in enumerate([
            ("a key", lambda: self.desk.key("Escape", window="Kelvane")),
            ("a crash", self.kill_windows),
            ("a click elsewhere", lambda: self.desk.pointer(300, 500, 1)),
        ], start=30):
            with self.subTest(name):
                self.holds_back(self.open(), capacity, close)
                self.assertIn(Menu.of(self.item).labels()[0], (f"{capacity}﹪", f"{capacity}%"))
        self.wait_for_no_windows()

    def test_stays_closed_where_no_window_can_be_shown(self):
        kelvane = self.start_kelvane(
            says=["kelvane: no window can be shown here, so a click opens no menu"])
        self.item = kelvane.item()
        for _ in range(2):
            self.click()
        self.changes_picture(self.item, lambda: self.power.set("capacity=23"), "23 %")


if __name__ == "__main__":
    unittest.main()
