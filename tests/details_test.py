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


class Impostor:
    """Owns Kelvane's name on the bus at `address`, and answers as it is told."""

    def __init__(self, address):
        self._bus = Bus(address)
        self._object = None

    def __enter__(self):
        self._bus.own(IDENTIFIER)
        return self

    def __exit__(self, *_):
        self._bus.close()

    def will_answer(self, answer):
        """`answer` is a tuple as GVariant text, "error", or None for no answer at all."""
        self.asked = 0
        self._bus.in_thread(lambda: self._export(answer))

    def _export(self, answer):
        is_tuple = answer and answer != "error"
        value = GLib.Variant.parse(None, answer, None, None) if is_tuple else None
        children = range(value.n_children()) if value else ()
        types = [value.get_child_value(number).get_type_string() for number in children]
        results = "".join(f'<arg type="{type_}" direction="out"/>' for type_ in types)
        xml = (f'<node><interface name="{INTENTS}"><method name="GetBatteryDetails">{results}'
               "</method></interface></node>")

        def on_call(*arguments):
            self.asked += 1
            if value:
                arguments[-1].return_value(value)
            elif answer:
                arguments[-1].return_dbus_error("org.kelvane.Error", "no\nbattery")

        if self._object:
            self._bus.connection.unregister_object(self._object)
        interface = Gio.DBusNodeInfo.new_for_xml(xml).interfaces[0]
        self._object = self._bus.connection.register_object(
            APPLICATION[1], interface, on_call, None, None)


class ImpostorTest(DeskCase):
    def test_nonsense_is_not_believed(self):
        expected = json.loads(self.kelvane().run("details", "--json").stdout)
        self.assertIs(expected["isPowerAdapterConnected"], False)
        connected = "'isPowerAdapterConnected': <true>"
        with Impostor(self.desk.environment["DBUS_SESSION_BUS_ADDRESS"]) as impostor:
            for answer in [
                "error",
                None,
                "(int64 4, {%s})" % connected,
                "(4, {%s, 'health': <'1'>})" % connected,
                "(5, {%s})" % connected,
            ]:
                with self.subTest(answer=answer):
                    impostor.will_answer(answer)
                    began = time.monotonic()
                    done = self.kelvane().run("details", "--json")
                    took = time.monotonic() - began
                    self.assertEqual(impostor.asked, 1)
                    self.assertEqual((done.returncode, done.stderr), (0, ""))
                    self.assertEqual(json.loads(done.stdout), expected)
                    self.assertLess(took, 3)


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
        for full, condition in ((40_000_000, "fair"), (20_000_000, "poor")):
            tree.set(f"energy_full={full}")
            told = json.loads(self.details(tree, "--json"))
            self.assertEqual(told["condition"], condition)
            self.assertAlmostEqual(told["health"], full / 60e6, places=3)

    def test_no_battery(self):
        tree = SupplyDirectory(self.directory / "supplies", names=())
        self.assertEqual(json.loads(self.details(tree, "--json")), {
            "isPowerAdapterConnected": True,
            "timeUntilFullOrDepleted": 0.0,
            "health": None,
            "condition": "unknown",
        })


if __name__ == "__main__":
    unittest.main()
