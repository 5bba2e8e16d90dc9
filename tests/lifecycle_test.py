"""Kelvane outlives what it leans on: panels, upowerd, sleep; and it ends cleanly."""

import time
import unittest

from rig.case import CommandCase, DeskCase
from rig.menu import Menu
from rig.processes import wait_until
from rig.supplies import SupplyDirectory


class PanelTest(DeskCase):
    def test_comes_back_after_the_panel_crashed(self):
        kelvane = self.start_kelvane()
        self.assertTrue(kelvane.item())
        self.desk.kill_panel()
        self.desk.start_panel()
        item = kelvane.item()
        self.changes_picture(item, lambda: self.power.set("capacity=9"), "a change afterwards")

    def test_waits_for_a_panel_that_comes_later(self):
        self.desk.kill_panel()
        kelvane = self.start_kelvane()
        try:
            wait_until(lambda: self.is_on_the_bus(kelvane.process.pid), "kelvane's start")
        finally:
            self.desk.start_panel()
        self.assertTrue(kelvane.item().picture())

    def is_on_the_bus(self, pid):
        return any(self.desk.bus.process_of(name) == pid for name in self.desk.bus.names())

    def test_sigterm_takes_the_item_away_at_once(self):
        kelvane = self.start_kelvane()
        owner = kelvane.item().owner
        began = time.monotonic()
        self.assertEqual(kelvane.terminate(), 0, kelvane.output())
        wait_until(lambda: not self.desk.bus.has_owner(owner), "its end on the bus", seconds=1)
        kelvane.wait_until_gone(seconds=1)
        print(f"ended and gone after {1000 * (time.monotonic() - began):.0f} ms")


class SourceTest(DeskCase):
    def tearDown(self):
        if not self.power.has_upower():
            self.power.start_upower()

    def test_follows_upower_after_its_restart(self):
        item = self.start_kelvane().item()
        self.waits_for_estimate(item)
        self.power.stop_upower()
        self.waits_for_estimate(item, is_there=False)

        def return_at_20():
            self.power.set_silently("capacity=20")
            self.power.start_upower()

        self.changes_picture(item, return_at_20, "UPower's return at 20 %")
        self.waits_for_estimate(item)
        self.changes_picture(item, lambda: self.power.set("capacity=80"), "a change afterwards")

    def test_kernel_events_serve_while_upower_is_away(self):
        item = self.start_kelvane(environment=self.desk.mock_environment).item()
        self.power.stop_upower()
        self.changes_picture(item, lambda: self.power.set("capacity=20"), "20 % without UPower")

    def test_kernel_events_serve_without_upower(self):
        environment = self.desk.mock_environment
        item = self.start_kelvane("--no-upower", environment=environment).item()
        self.changes_picture(item, lambda: self.power.set("capacity=20"), "20 % without UPower")
        self.changes_picture(item, self.power.plug, "the adapter without UPower")

    def test_reads_again_after_sleep(self):
        for arguments in ([], ["--no-upower"]):
            with self.subTest(arguments=arguments):
                self.power.reset()
                environment = self.desk.mock_environment
                kelvane = self.start_kelvane(*arguments, environment=environment)
                # Drained asleep: the kernel tells nothing of it.
                self.changes_picture(kelvane.item(), self.drain_asleep, "a sleep that drained it")
                self.assertEqual(kelvane.terminate(), 0)

    def drain_asleep(self):
        self.power.sleep()
        self.power.set_silently("capacity=12")
        self.power.wake()

    def test_reads_another_tree_instead_of_upower(self):
        tree = SupplyDirectory(self.temporary_directory() / "power_supply")
        tree.set("capacity=83")
        arguments = ("--no-upower", "--power-supply", str(tree.path))
        item = self.start_kelvane(*arguments).item()
        labels = Menu.of(item).labels()
        self.assertTrue(any("83" in label for label in labels), labels)
        self.assertFalse(any("57" in label for label in labels), labels)
        self.changes_picture(item, lambda: tree.set("capacity=20"), "20 % in the tree")


class NoBusTest(CommandCase):
    def test_says_in_one_line_that_there_is_no_session_bus(self):
        done = self.run_kelvane(code=1)
        self.assertIn("session bus", done.stderr)
        self.assertEqual(done.stdout, "")


if __name__ == "__main__":
    unittest.main()
