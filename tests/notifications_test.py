"""What kelvane tells through the notification daemon: levels, a full battery, one running out."""

import unittest

from rig.case import DeskCase
from rig.processes import wait_until

FULL = ("Fully Charged", "Your Mac's battery is at 100%")
# A text alone is a notice's body: several daemons cut a long summary short.
LOW = (
    "Kelvane",
    "Your Mac is running out of battery and will soon sleep unless plugged into a power outlet.",
)
SAYS_LOW = f"kelvane: {LOW[1]}"
CLOSES_WITHIN = 0.2 + 0.1  # seconds: as often as it looks at the adapter, and the way on the buses


class NotificationsCase(DeskCase):
    def start_with_levels(self, **options):
        kelvane = self.kelvane()
        kelvane.set("notifyAtPercentagesOnBattery", "[0.2]")
        kelvane.set("notifyAtPercentagesOnPower", "[0.8]")
        kelvane.set("notifyWhenFullyCharged", "true")
        self.item = self.start_kelvane(directory=kelvane.directory, **options).item()

    def changes(self, change, what):
        """Makes a change of the power and waits until kelvane shows it."""
        if isinstance(change, int):
            level = change
            change = lambda: self.power.set(f"capacity={level}")
        self.changes_picture(self.item, change, what)

    def wait_for_texts(self, expected, what):
        texts = self.desk.notices.texts
        wait_until(lambda: texts() == expected, lambda: f"{expected} after {what}: {texts()}", 2)

    def wait_until_shown(self, expected, what):
        shown = self.desk.notices.shown_texts
        wait_until(lambda: shown() == expected, lambda: f"{expected} after {what}: {shown()}", 2)


class RulesTest(NotificationsCase):
    def test_levels_and_full(self):
        self.start_with_levels()
        plug, unplug = self.power.plug, self.power.unplug
        low, high = ("20%", ""), ("80%", "")
        expected = []
        # change, what it posts, what is shown then
        for number, (change, posted, shown) in enumerate([
            (21, [], []),
            (20, [low], [low]),
            (19, [], [low]),
            (20, [low], [low]),
            (plug, [], []),
            (21, [], []),
            (20, [], []),
            (79, [], []),
            (80, [high], [high]),
            (unplug, [], []),
            (81, [], []),
            (80, [], []),
            (plug, [], []),
            (99, [], []),
            (100, [FULL], [FULL]),
            (unplug, [], []),
        ]):
            step = f"step {number}, {change}"
            self.changes(change, step)
            expected += posted
            self.wait_for_texts(expected, step)
            self.wait_until_shown(shown, step)
            if posted:  # The same once more is told of, but is no arrival.
                self.power.set("power_now=7000000")
                self.power.set("power_now=9500000")
        for notice in self.desk.notices.posted():
            self.assertEqual((notice.application, notice.urgency), ("Kelvane", 1))
            self.assertEqual(notice.hints["desktop-entry"], "org.kelvane.Kelvane")
        self.assertEqual(self.desk.notices.texts(), expected)

    def test_running_out_is_told_once_in_a_discharge(self):
        kelvane = self.start_kelvane(says=[SAYS_LOW, SAYS_LOW])
        self.item = kelvane.item()
        notices = self.desk.notices
        for discharge in (1, 2):
            self.changes(4, "4 %")
            self.wait_until_shown([LOW], "4 %")
            self.assertEqual([notice.urgency for notice in notices.posted()], [2] * discharge)
            self.changes(3, "3 %")
            self.is_closed_soon_by(self.power.plug)
            self.changes(self.power.unplug, "unplugging at 3 %")
            self.changes(4, "4 % once more")
            self.assertEqual(notices.texts(), [LOW] * discharge)
            self.changes(21, "21 %")

    def is_closed_soon_by(self, change):
        upower = self.power.record(path=None)
        closings = lambda: self.desk.notices.monitor.calls("CloseNotification")
        before = len(closings())
        self.changes(change, "the adapter")
        self.wait_until_shown([], "the adapter")
        took = closings()[before].time - upower.wait_for("PropertiesChanged").time
        print(f"closed {1000 * took:.0f} ms after UPower told of the adapter")
        self.assertLess(took, CLOSES_WITHIN)


class LateDaemonTest(NotificationsCase):
    def test_what_is_due_is_shown_by_a_daemon_that_comes_later(self):
        self.desk.processes.stop("notifier")
        self.start_with_levels(says=[SAYS_LOW])
        for level in 21, 20, 4:
            self.changes(level, f"{level} %")
        self.desk.start_notifier()
        level = lambda: ("20%", "") in self.desk.notices.shown_texts()
        wait_until(level, "what was to be shown", seconds=2)
        self.changes(self.power.plug, "the adapter")
        self.wait_until_shown([], "the adapter")


if __name__ == "__main__":
    unittest.main()
