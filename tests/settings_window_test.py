"""The settings window of the running program: every control, its key, and what follows it."""

import os
import pathlib
import unittest

from rig.meter import memory
from rig.processes import wait_until
from rig.window_case import WindowCase, unless_gone

TITLE = "Kelvane Settings"
HIDDEN = "Kelvane will be hidden while the power adapter is connected."
NO_WINDOWS = "No window can be shown here; “kelvane settings list” shows every setting."
TOGGLE, RADIO = "check box", "radio button"
# What the Menu Bar tab holds for the types and values.
ICON = ["Large icon", "Alternative icon style"]
TEXT = ["Small text size"]
SIGN, ON_HOVER = ["Show percentage sign"], ["Show time remaining on hover"]
OTHER_ON_HOVER = ["Show percentage on hover"]
ALLOWED_GROWTH = 64  # kB of memory that the resident program has for itself


class SettingsCase(WindowCase):
    def open(self, **options):
        item = self.start(**options)
        self.choose("Preferences…")
        self.seen.find("frame", TITLE)
        return item

    def wait_for_key(self, key, value):
        kept = self.running.preferences
        wait_until(lambda: kept().get(key) == value, lambda: f"{key} = {value}: {kept()}", 3)

    def toggles(self, role="frame"):
        window = self.seen.find(role, TITLE)
        return [node for node in window.descendants() if node.role == TOGGLE]

    def wait_for_toggles(self, *names):
        """Until the Menu Bar tab has these above the last one."""
        expected = [*names, "Hide while on power"]
        shown = lambda: unless_gone(lambda: [node.name for node in self.toggles()][2:])
        wait_until(lambda: shown() == expected, lambda: f"{expected}: {shown()}", 3)


class ControlsTest(SettingsCase):
    def test_general(self):
        self.open()
        autostart = self.running.directory / "config/autostart"
        entry = autostart / "org.kelvane.Kelvane-AutoStartHelper.desktop"
        for is_on in True, False, True:
            self.press(TOGGLE, "Launch at login")
            wait_until(lambda: entry.exists() == is_on, f"{entry}: {is_on}", 3)
            self.wait_for_state(TOGGLE, "Launch at login", "checked", is_on)
        self.assertIn("/kelvane-autostart-helper", entry.read_text())
        for is_on in True, False:
            self.press(TOGGLE, "Notify when fully charged")
            self.wait_for_key("notifyWhenFullyCharged", is_on)
            self.wait_for_state(TOGGLE, "Notify when fully charged", "checked", is_on)

        self.press("push button", "Notify at percentages…")
        self.seen.find("dialog", TITLE)
        columns = self.toggles("dialog")
        levels = [10, 12, 15, 20, 25, 30, 35, 40, 50, 60, 70, 75, 77, 80, 90, 95, 97]
        self.assertEqual([int(node.name[:-1]) for node in columns], [*levels, *levels])
        on_battery, on_power = "notifyAtPercentagesOnBattery", "notifyAtPercentagesOnPower"
        for column, level, key, stored in [
            (0, 77, on_battery, [0.77]),
            (1, 12, on_power, [0.12]),
            (1, 97, on_power, [0.12, 0.97]),
            (1, 12, on_power, [0.97]),
        ]:
            with self.subTest(key=key, stored=stored):
                columns[column * len(levels) + levels.index(level)].press()
                kept = lambda: sorted(self.running.preferences().get(key, []))
                wait_until(lambda: kept() == stored, lambda: f"{key} = {stored}: {kept()}", 3)
        self.assertEqual(self.running.preferences()[on_battery], [0.77])
        ticked = lambda: [node.name[:-1] for node in columns if node.is_in("checked")]
        wait_until(lambda: ticked() == ["77", "97"], lambda: f"77 and 97 ticked: {ticked()}", 3)
        self.running.set(on_battery, "[0.1, 0.5]")
        wait_until(lambda: ticked() == ["10", "50", "97"], lambda: f"{ticked()}", 3)
        self.press("push button", "Done")
        self.wait_until_gone("dialog", TITLE)

    def test_menu_bar(self):
        item = self.open()
        self.press("page tab", "Menu Bar")
        self.wait_for_toggles(*ICON, *SIGN, *ON_HOVER)
        # A control, its key, the value stored, what the item does; toggles from then on.
        for role, name, key, value, changes, toggles in [
            (RADIO, "Text", "textOnlyIcon", True, True, TEXT + SIGN + ON_HOVER),
            (TOGGLE, *SIGN, "showPercentageSignInIcon", False, True, None),
            (TOGGLE, *TEXT, "smallMenuBarText", False, True, None),
            (RADIO, "Time remaining", "showPercentage", False, True, TEXT + OTHER_ON_HOVER),
            (RADIO, "Icon", "textOnlyIcon", False, True, ICON + OTHER_ON_HOVER),
            (TOGGLE, "Large icon", "largeIcon", True, True, None),
            (TOGGLE, "Alternative icon style", "oldIconStyle", True, True, None),
            (TOGGLE, *OTHER_ON_HOVER, "showTimeOrPercentageOnHover", False, False, None),
            (RADIO, "Percentage", "showPercentage", True, True, ICON + SIGN + ON_HOVER),
            (TOGGLE, *ON_HOVER, "showTimeOrPercentageOnHover", True, False, None),
        ]:
            with self.subTest(name, value=value):
                act = lambda: self.press(role, name)
                if changes:
                    self.changes_picture(item, act, name)
                else:
                    act()
                self.wait_for_key(key, value)
                self.wait_for_state(role, name, "checked", role == RADIO or value)
                if toggles:
                    self.wait_for_toggles(*toggles)

    def test_hide_while_on_power(self):
        self.power.plug()
        self.open()
        self.press(TOGGLE, "Hide while on power")
        self.running.wait_until_gone(seconds=1)
        self.seen.find("dialog", HIDDEN)
        self.press("push button", "OK")
        self.wait_until_gone("dialog", HIDDEN)
        self.wait_for_key("hideIconWhenOnPower", True)
        self.power.unplug()
        self.running.item(seconds=1)
        self.press(TOGGLE, "Hide while on power")
        self.wait_for_key("hideIconWhenOnPower", False)
        self.assertIsNone(self.seen.look("dialog", HIDDEN))


class WindowTest(SettingsCase):
    def test_asked_again_it_comes_to_the_front(self):
        self.open()
        self.press(TOGGLE, "Launch at login")
        self.wait_for_state(TOGGLE, "Launch at login", "checked")
        self.press("page tab", "Menu Bar")
        self.wait_for_state("page tab", "Menu Bar", "selected")
        self.choose("More", "About")
        self.wait_until_active("About Kelvane")
        entry, = (self.running.directory / "config/autostart").iterdir()
        entry.unlink()
        self.choose("Preferences…")
        self.wait_until_active(TITLE)
        self.wait_for_state(TOGGLE, "Launch at login", "checked", False)
        self.wait_for_state("page tab", "Menu Bar", "selected")
        titles = [window.name for window in self.seen.windows()]
        self.assertEqual(titles.count(TITLE), 1, titles)

    def test_leaves_no_memory_behind(self):
        self.start_and_settle()
        before = memory(self.running.process.pid)
        for _ in range(8):
            self.choose("Preferences…")
            self.seen.find("frame", TITLE)
            self.desk.key("Escape", window=TITLE)
            self.wait_for_no_windows()
        after = memory(self.running.process.pid)
        print(f"from {before} to {after}")
        if not os.environ.get("KELVANE_SANITIZE"):
            self.assertLess(after.dirty - before.dirty, ALLOWED_GROWTH)

    def test_display_that_goes(self):
        # Of a number that nobody takes meanwhile.
        display = f":{5000 + os.getpid() % 50000}"
        self.start_display(display)
        tree = {"KELVANE_POWER_SUPPLY": self.power.power_supply}
        ended = "kelvane: the window program ended with status 1"
        item = self.open(
            environment={**self.desk.environment, **tree, "DISPLAY": display},
            says=[ended, "kelvane-windows: there is no display to show windows on", ended,
                  f"kelvane: {NO_WINDOWS}"],
        )
        self.desk.processes.stop("other_display")
        self.wait_for_no_windows()
        self.changes_picture(item, lambda: self.power.set("capacity=40"), "40 %")
        self.choose("Preferences…")
        self.wait_for_texts(("Kelvane", NO_WINDOWS))
        self.start_display(display)
        self.choose("Preferences…")
        self.seen.find("frame", TITLE)

    def start_display(self, display):
        self.desk.start("other_display", "Xvfb", display, "-nolisten", "tcp")
        socket = pathlib.Path(f"/tmp/.X11-unix/X{display[1:]}")
        wait_until(socket.exists, f"the display {display}")


if __name__ == "__main__":
    unittest.main()
