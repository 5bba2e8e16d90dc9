"""What kelvane leans on crashes again and again: it is back each time and holds no more for it."""

import unittest

from rig import faults
from rig.bus import Bus
from rig.case import CommandCase, DeskCase
from rig.kelvane import IDENTIFIER, Kelvane
from rig.menu import Menu
from rig.private_bus import start_bus
from rig.processes import Processes, wait_until
from rig.supplies import SupplyDirectory

CRASHES = 50
ENDS = 20  # of the session


class CrashCase(DeskCase):
    def crashes(self, kelvane, fault, once, milliseconds=25):
        faults.outlives(self, kelvane, fault, CRASHES, once, milliseconds)

    @staticmethod
    def level(number):
        """Another one at each crash."""
        return 30 + number


class PanelTest(CrashCase):
    notifier = "none"

    def test_panel(self):
        kelvane = self.start_kelvane()
        kelvane.item()

        def crash(number):
            self.desk.kill_panel()
            self.power.set(f"capacity={self.level(number)}")
            self.desk.start_panel()
            faults.wait_for_line(kelvane.item(), f"{self.level(number)}%", "the panel's return")

        self.crashes(kelvane, "panel killed", crash)


class NotifierTest(CrashCase):
    def test_notification_daemon(self):
        kelvane = self.kelvane()
        kelvane.set("notifyAtPercentagesOnBattery", "[0.2, 0.4]")
        kelvane = self.start_kelvane(directory=kelvane.directory)
        item = kelvane.item()

        def crash(number):
            level = (20, 40)[number % 2]
            is_away = number % 4 < 2  # when the level is reached
            self.desk.processes.kill("notifier")
            if is_away:
                self.changes(item, level)
            self.desk.start_notifier()
            if not is_away:
                self.changes(item, level)
            shown = self.desk.notices.shown_texts
            wait_until(lambda: shown() == [(f"{level}%", "")],
                              lambda: f"the notice of {level} %: {shown()}")
            self.desk.notices.clear()

        self.crashes(kelvane, "notification daemon killed", crash)


    def changes(self, item, level):
        self.power.set(f"capacity={level}")
        faults.wait_for_line(item, f"{level}%", "the change")


class UPowerTest(CrashCase):
    notifier = "none"

    def test_upowerd(self):
        kelvane = self.start_kelvane()
        item = kelvane.item()

        def crash(number):
            self.power.processes.kill("upowerd")
            self.power.set(f"capacity={self.level(number)}")
            self.power.start_upower()
            faults.wait_for_line(item, f"{self.level(number)}%", "UPower's return")
            # Which knows what the kernel does not tell.
            wait_until(lambda: Menu.of(item).labels()[1].endswith(" Remaining"), "its estimate")

        self.crashes(kelvane, "upowerd killed", crash)


class SessionBusTest(CommandCase):
    def test_session_bus(self):
        tree = SupplyDirectory(self.directory / "power_supply")
        for number in range(ENDS):
            folder = self.directory / str(number)
            folder.mkdir()
            self.ends_with_the_bus(folder, tree)
        faults.say("session bus killed", ENDS)

    def ends_with_the_bus(self, folder, tree):
        with Processes(folder) as processes:
            address = start_bus(processes, folder, "session")
            environment = {**self.environment, "DBUS_SESSION_BUS_ADDRESS": address,
                           "KELVANE_POWER_SUPPLY": str(tree.path), "KELVANE_UPOWER": "no"}
            with Bus(address) as bus:
                kelvane = Kelvane(folder, environment, bus)
                # In the way of writing: what it counts and notes at its start is due until the end.
                lock = kelvane.preferences_file.with_suffix(".plist.lock")
                lock.mkdir()
                self.enter(kelvane)
                wait_until(lambda: bus.has_owner(IDENTIFIER), "kelvane's name")
                wait_until(kelvane.output, "its complaint")
                lock.rmdir()
                self.assertNotIn("Tq_launchCount", kelvane.preferences())
                processes.kill("session_bus")
                self.assertEqual(kelvane.process.wait(5), 0, kelvane.output())
                self.assertEqual(kelvane.preferences()["Tq_launchCount"], 1)
                self.assertEqual(len(kelvane.output().splitlines()), 1, kelvane.output())


if __name__ == "__main__":
    unittest.main()
