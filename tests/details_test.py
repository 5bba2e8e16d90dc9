"""The battery's details for automation: over the bus, and by command with and without a running
kelvane."""

import json
import time
import unittest

from gi.repository import Gio, GLib

from rig.bus import Bus
from rig.case import CommandCase, DeskCase
from rig.kelvane import APPLICATION, IDENTIFIER, run
from rig.processes import wait_until
from rig.supplies import SupplyDirectory

INTENTS = f"{IDENTIFIER}.Intents"
PROPERTIES = {
    "isPowerAdapterConnected": "b",
    "timeUntilFullOrDepleted": "d",
    "health": "d",
    "condition": "s",
}
SUCCESS = 4


class RunningTest(DeskCase):
    def details(self):
        reply = self.desk.bus.connection.call_sync(
            *APPLICATION[:2], INTENTS, "GetBatteryDetails", None, GLib.VariantType("(ia{sv})"),
            Gio.DBusCallFlags.NO_AUTO_START, 5000, None,
        )
        told = reply.get_child_value(1)
        types = {name: told.lookup_value(name).get_type_string() for name in told.unpack()}
        self.assertEqual(types, PROPERTIES)
        code, details = reply.unpack()
        self.assertEqual(code, SUCCESS)
        return details

    def test_bus_and_command_tell_the_same_battery(self):
        kelvane = self.start_kelvane()
        kelvane.item()
        states = [
            # changes, on power, shortest and longest time in minutes
            ((), False, 180, 230),
            (("online=1", "status=Charging"), True, 130, 180),
            (("online=1", "status=Full", "capacity=100", "energy_full=45000000"), True, 0, 0),
        ]
        for changes, on_power, shortest, longest in states:
            with self.subTest(changes=changes):
                self.power.set(*changes)
                minutes = lambda: self.details()["timeUntilFullOrDepleted"] / 60
                shown = lambda: shortest <= minutes() <= longest
                wait_until(shown, lambda: f"the time: {self.details()}", seconds=5)
                told = self.details()
                self.assertEqual(told["timeUntilFullOrDepleted"] % 60, 0)
                self.assertIs(told["isPowerAdapterConnected"], on_power)
                self.assertEqual(told["condition"], "good")
                full = 45e6 if "status=Full" in changes else 57e6
                self.assertAlmostEqual(told["health"], full / 60e6, places=3)
                # With a tree of its own to fall back on it would tell another battery.
                other = SupplyDirectory(self.temporary_directory() / "power_supply", names=())
                environment = {**kelvane.environment, "KELVANE_UPOWER": "no",
                               "KELVANE_POWER_SUPPLY": str(other.path)}
                done = run(environment, "details", "--json")
                self.assertEqual((done.returncode, done.stderr), (0, ""))
                self.assertEqual(json.loads(done.stdout), self.details())

    def test_another_source_is_read_beside_the_running_one(self):
        kelvane = self.start_kelvane()
        kelvane.item()
        tree = SupplyDirectory(self.temporary_directory() / "power_supply")
        tree.plug()
        done = kelvane.run("--no-upower", "--power-supply", str(tree.path), "details", "--json")
        self.assertIs(json.loads(done.stdout)["isPowerAdapterConnected"], True)
        self.assertIs(self.details()["isPowerAdapterConnected"], False)


class ImpostorTest(DeskCase):
    def test_nonsense_is_not_believed(self):
        expected = json.loads(self.kelvane().run("details", "--json").stdout)
        self.assertIs(expected["isPowerAdapterConnected"], False)
        impostor = self.enterContext(Bus(self.desk.environment["DBUS_SESSION_BUS_ADDRESS"]))
        impostor.own(IDENTIFIER)
        impostor.connection.add_filter(self.answer_instead)
        connected = "'isPowerAdapterConnected': <true>"
        for self.answer in [
            "error",
            None,
            "(int64 4, {%s})" % connected,
            "(4, {%s, 'health': <'1'>})" % connected,
            "(5, {%s})" % connected,
        ]:
            with self.subTest(answer=self.answer):
                self.asked = 0
                began = time.monotonic()
                done = self.kelvane().run("details", "--json")
                took = time.monotonic() - began
                self.assertEqual(self.asked, 1)
                self.assertEqual((done.returncode, done.stderr), (0, ""))
                self.assertEqual(json.loads(done.stdout), expected)
                self.assertLess(took, 3)

    def answer_instead(self, connection, message, incoming):
        if not incoming or message.get_member() != "GetBatteryDetails":
            return message
        self.asked += 1
        if self.answer == "error":
            reply = message.new_method_error_literal("org.kelvane.Error", "no\nbattery")
        else:
            reply = message.new_method_reply()
        if self.answer and self.answer != "error":
            reply.set_body(GLib.Variant.parse(None, self.answer, None, None))
        if self.answer:
            connection.send_message(reply, Gio.DBusSendMessageFlags.NONE)
        return None


class AloneTest(CommandCase):
    def details(self, tree, *options):
        source = ("--no-upower", "--power-supply", str(tree.path))
        return self.run_kelvane(*source, "details", *options).stdout

    def test_reads_by_itself(self):
        tree = SupplyDirectory(self.directory / "supplies")
        told = json.loads(self.details(tree, "--json"))
        self.assertEqual(list(told), list(PROPERTIES))
        self.assertEqual((told["isPowerAdapterConnected"], told["condition"]), (False, "good"))
        self.assertAlmostEqual(told["health"], 0.95, places=3)
        lines = self.details(tree).splitlines()
        minutes = int(told["timeUntilFullOrDepleted"] // 60)
        self.assertEqual(lines, [
            "Power adapter: not connected",
            f"Time until empty: {minutes // 60}h {minutes % 60}m",
            "Health: 95%",
            "Condition: good",
        ])


if __name__ == "__main__":
    unittest.main()
