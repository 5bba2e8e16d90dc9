"""Batteries that sleep, vanish, come in pairs, are not the computer's own, or are held at a limit:
kelvane tells the level of the laptop, and no time that cannot be."""

import json
import unittest

from rig import faults
from rig.case import DeskCase
from rig.fake_upower import FakeUPower
from rig.menu import Menu
from rig.processes import wait_until

TIMES = 20
LOW = ("Your Mac is running out of battery and will soon sleep "
       "unless plugged into a power outlet.")
SAYS_LOW = f"kelvane: {LOW}"
LONGEST = 20 * 3600  # seconds of a time that a battery can have


class BatteryCase(DeskCase):
    def each_source(self, what, says=(), **settings):
        """A kelvane that reads UPower, then one that reads the kernel, each ended at its turn's end."""
        for name, arguments in (("UPower", []), ("the kernel", ["--no-upower"])):
            with self.subTest(source=name):
                self.power.reset()
                self.desk.notices.clear()
                environment = self.desk.mock_environment
                directory = self.kelvane().directory
                for key, value in settings.items():
                    self.kelvane(directory=directory).set(key, value)
                kelvane = self.start_kelvane(
                    *arguments, environment=environment, directory=directory, says=says)
                try:
                    yield kelvane, kelvane.item(), f"{what}, read from {name}"
                except GeneratorExit:  # The test has failed and says so itself.
                    return
                self.assertEqual(kelvane.terminate(), 0, kelvane.output())

    def shows(self, item, *lines, what="a change"):
        """The menu's first lines must become these."""
        labels = lambda: tuple(Menu.of(item).labels()[: len(lines)])
        wait_until(lambda: labels() == lines, lambda: f"{lines} after {what}: {labels()}")

    def has_possible_time(self, kelvane):
        done = kelvane.run("details", "--json")
        self.assertEqual(done.returncode, 0, done.stderr)
        details = json.loads(done.stdout)
        self.assertTrue(0 <= details["timeUntilFullOrDepleted"] <= LONGEST, details)
        return details["timeUntilFullOrDepleted"]


class ComingAndGoingTest(BatteryCase):
    notifier = "none"

    def test_sleep(self):
        for kelvane, item, fault in self.each_source("sleep and wake"):

            def sleep(number):
                on = number % 3 == 2
                power = [f"online={int(on)}", f"status={'Charging' if on else 'Discharging'}"]
                self.power.sleep()
                self.power.set_silently(f"capacity={90 - number}", *power)
                self.power.wake()
                labels = faults.wait_for_line(item, f"{90 - number}%", "waking")
                self.assertIn("Power Adapter" if on else "Battery", labels)

            faults.outlives(self, kelvane, fault, TIMES, sleep, milliseconds=25)

    def test_battery_taken_out(self):
        for kelvane, item, fault in self.each_source("battery removed and added"):
            self.power.plug()

            def take_out(number):
                self.power.remove("BAT0")
                faults.wait_for_line(item, "Fully Charged", "the battery's removal")
                self.power.add("BAT0", **{**self.at(30 + number), "status": "Charging"})
                faults.wait_for_line(item, f"{30 + number}%", "its return")

            faults.outlives(self, kelvane, fault, TIMES, take_out, milliseconds=50)
            self.power.reset()

    @staticmethod
    def at(level, full=57_000_000):
        return {"capacity": str(level), "energy_full": str(full),
                "energy_now": str(full * level // 100)}

    def test_second_battery(self):
        for _, item, fault in self.each_source("two unequal batteries"):
            for full, level, together in [
                # BAT0 has 57 % of 57 Wh.
                (20_000_000, 5, 43),
                (20_000_000, 95, 67),
                (99_000_000, 5, 24),
                (5_000_000, 5, 53),
            ]:
                self.power.add("BAT1", **self.at(level, full))
                faults.wait_for_line(item, f"{together}%", f"{level} % of {full} µWh")
                self.power.remove("BAT1")
                faults.wait_for_line(item, "57%", "its removal")
            faults.say(fault, 4)


class OthersTest(BatteryCase):
    def test_mouse(self):
        levels = {"notifyAtPercentagesOnBattery": "[0.02, 0.03, 0.57, 0.6]"}
        mouse = {"scope": "Device", "power_now": "1"}
        for kelvane, item, fault in self.each_source("mouse beside the battery", **levels):
            for number, (level, own) in enumerate([(3, 58), (50, 59), (100, 61)]):
                self.power.add("hidpp_battery_0", capacity=str(level), **mouse)
                self.power.set("hidpp_battery_0.capacity=2")
                self.power.set(f"capacity={own}")
                self.shows(item, f"{own}%", what=f"a mouse at {level} %")
                self.has_possible_time(kelvane)
                self.power.remove("hidpp_battery_0")
            self.assertEqual(self.desk.notices.texts(), [])
            faults.say(fault, number + 1)

    def test_ups(self):
        self.power.stop_upower()
        self.addCleanup(self.power.start_upower)
        item = self.start_kelvane().item()
        levels = (100.0, 8.0, 0.0)
        for ups in levels:
            with FakeUPower(self.power.address, ups) as upower:
                for level in (44, 33):
                    upower.level(level)
                    self.shows(item, f"{level}%", what=f"a UPS at {ups} %")
            self.shows(item, "57%", what="UPower's end")
        faults.say("UPS beside the battery", len(levels))


class ChargerTest(BatteryCase):
    def test_charge_limit(self):
        """It is held at 80 %: no time, no matter what little current flows; and no restlessness."""
        self.power.set("charge_control_end_threshold=80")
        self.addCleanup(self.power.set, "charge_control_end_threshold=100")
        for kelvane, item, fault in self.each_source("held at a charge limit"):

            def holds(number):
                trickle = (0, 1, 10_000)[number % 3]  # µW
                self.power.set("online=1", "status=Charging", "capacity=79", f"power_now={trickle}")
                faults.wait_for_line(item, "79%", "charging")
                self.power.set("status=Not charging", "capacity=80", f"power_now={trickle}")
                self.shows(item, "80%", "Not Charging", "Power Adapter", what="the limit")
                self.assertEqual(self.has_possible_time(kelvane), 0)
                self.assertEqual(item.tooltip()[0], "0:00")

            faults.outlives(self, kelvane, fault, TIMES, holds, milliseconds=50)

    def test_weak_charger(self):
        levels = {"notifyAtPercentagesOnPower": "[0.2, 0.04]"}
        fault = "drained on a weak charger"
        for kelvane, item, fault in self.each_source(fault, says=[SAYS_LOW], **levels):
            self.power.set("online=1", "capacity=21")
            for level in (21, 20, 19, 10, 4, 3):
                self.power.set(f"capacity={level}")
                self.shows(item, f"{level}%", "Not Charging", "Power Adapter")
                self.has_possible_time(kelvane)
            posted = self.desk.notices.texts
            wait_until(lambda: len(posted()) >= 2, "the notices of the levels")
            self.assertEqual(posted(), [("20%", ""), ("4%", "")])
            self.power.unplug()
            wait_until(lambda: len(posted()) >= 3, "the alert of a battery that runs out")
            self.assertEqual(posted()[2:], [("Kelvane", LOW)])
            faults.say(fault, 6)


if __name__ == "__main__":
    unittest.main()
