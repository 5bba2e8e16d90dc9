"""The menu as hosts read it: every line of each state, at all times, whatever strangers send."""

import contextlib
import os
import random
import subprocess
import sys
import time
import unittest

from gi.repository import Gio, GLib

from rig.case import DeskCase
from rig.menu import INTERFACE, Menu
from rig.meter import memory
from rig.processes import wait_until
from rig.supplies import SupplyDirectory

PLUGGED = ("online=1", "status=Charging")
# Whatever a kelvane started for a test is told of the clock and the language.
CLOCK = {"TZ": "UTC", "LC_ALL": "C.UTF-8"}
# "+" can be chosen, "-" can't, "=" is a separator; a submenu's lines are indented.
COMMANDS = [
    "=",
    "+Preferences… [Control comma]",
    "+More",
    "  +Battery Preferences…",
    "  =",
    "  +About",
    "  =",
    "  +Send Feedback…",
    "  =",
    "  +FAQ",
]
PROFILES = "net.hadess.PowerProfiles"
ALLOWED_GROWTH = 500  # kB in a round of 30,000 calls
ROUNDS = 10


def described(lines, indent=""):
    """All that a host can tell of the lines, as texts."""
    result = []
    for line in lines:
        if line.properties.get("type") == "separator":
            result.append(indent + "=")
            continue
        text = ("+" if line.properties.get("enabled", True) else "-") + line.label
        for keys in line.properties.get("shortcut", []):
            text += f" [{' '.join(keys)}]"
        result.append(indent + text)
        result += described(line.children, indent + "  ")
    return result


def with_time(duration, minutes, on_power):
    """The two lines of a time, the second with "TIME" and the minutes until then."""
    if on_power:
        return [f"-{duration} Until Full", f"-Full At TIME+{minutes}"]
    return [f"-{duration} Remaining", f"-Empty At TIME+{minutes}"]


class MenuCase(DeskCase):
    def start(self, *arguments, **variables):
        self.running = self.start_kelvane(*arguments, variables={**CLOCK, **variables})
        self.menu = Menu.of(self.running.item())

    def sign(self):
        """The percent sign that other programs are handed: the small one where a font has it."""
        found = subprocess.run(["fc-list", ":charset=fe6a"], env=self.desk.environment,
                               check=True, capture_output=True)
        return "﹪" if found.stdout else "%"

    def expected(self, lines, condition="Good", health="95%"):
        lines = [line.replace("%", self.sign()) for line in lines]
        return [*lines, f"-Condition: {condition}", f"-Health: {health}", *COMMANDS]

    def shows(self, lines, **readings):
        """Waits until the menu has these lines and no more; nobody asks it to update."""
        expected = self.expected(lines, **readings)
        wait_until(lambda: self.is_shown(expected),
                   lambda: f"{expected}\ninstead of {described(self.menu.lines())}", seconds=5)

    def is_shown(self, expected):
        shown = described(self.menu.lines())
        return len(shown) == len(expected) and all(map(self.is_line, shown, expected))

    @staticmethod
    def is_line(shown, expected):
        text, time_of, minutes = expected.partition("TIME+")
        if not time_of:
            return shown == expected
        # The line was made at some moment of the last minute.
        now = time.time() + 60 * int(minutes)
        clocks = [time.strftime("%H:%M", time.gmtime(now - ago)) for ago in (0, 60)]
        return shown in [text + clock for clock in clocks]


class UPowerTest(MenuCase):
    """The states of a battery behind the real upowerd."""

    def test_lines_of_each_state(self):
        self.start()
        on_battery = lambda *time: [*with_time(*time, on_power=False), "-Battery"]
        on_power = lambda *time: [*with_time(*time, on_power=True), "-Power Adapter"]
        # changes of the tree from 57 % on battery, lines
        for changes, lines in [
            ((), ["-57%", *on_battery("3h 25m", 205)]),
            (("power_now=25000000",), ["-57%", *on_battery("1h 17m", 77)]),
            (("power_now=1500000",), ["-57%", *on_battery("20h+", 1299)]),
            (("capacity=100",), ["-100%", *on_battery("6h", 360)]),
            (("capacity=8",), ["-8%", *on_battery("28m", 28)]),
            (("power_now=200000",), ["-57%", "-Calculating Time Remaining…", "-Battery"]),
            (PLUGGED, ["-57%", *on_power("2h 34m", 154)]),
            ((*PLUGGED, "capacity=12", "power_now=10032000"), ["-12%", *on_power("5h", 300)]),
            # Implausible, so told by the level alone: nearly all within minutes, and no rate.
            ((*PLUGGED, "capacity=12", "power_now=200000000"), ["-12%", *on_power("2h 38m", 158)]),
            ((*PLUGGED, "capacity=99", "power_now=0"), ["-99%", *on_power("7m", 7)]),
            # To the limit only.
            ((*PLUGGED, "capacity=70", "charge_control_end_threshold=80"),
             ["-70%", *on_power("36m", 36)]),
            # Nearly full is not full.
            ((*PLUGGED, "capacity=99", "energy_now=56800000"), ["-99%", *on_power("1m", 1)]),
            (("online=1", "status=Not charging", "capacity=80"),
             ["-80%", "-Not Charging", "-Power Adapter"]),
            # The adapter is too weak.
            (("online=1",), ["-57%", "-Not Charging", "-Power Adapter"]),
            (("online=1", "status=Full", "capacity=100"), ["-Fully Charged", "-Power Adapter"]),
            (("online=1", "status=Full", "capacity=98"), ["-Fully Charged", "-Power Adapter"]),
        ]:
            with self.subTest(changes=changes):
                self.power.reset()
                self.power.set(*changes)
                self.shows(lines)

    def test_only_what_differs_is_told(self):
        self.start()
        self.power.set("online=1", "status=Not charging", "capacity=80")
        self.shows(["-80%", "-Not Charging", "-Power Adapter"])
        ids = [line.id for line in self.menu.lines()]
        told = self.menu.record()
        for _ in range(50):
            self.assertFalse(self.menu.about_to_show())
        self.power.set("capacity=79")
        changed = told.wait_for("ItemsPropertiesUpdated").arguments[0]
        self.assertEqual([number for number, _properties in changed], ids[:1])
        self.shows(["-79%", "-Not Charging", "-Power Adapter"])
        self.assertEqual(told.members(), ["ItemsPropertiesUpdated"])
        self.assertEqual([line.id for line in self.menu.lines()], ids)
        # Two lines come: hosts read again, and the commands are still the same.
        self.power.set(*PLUGGED)
        told.wait_for("LayoutUpdated")
        self.assertEqual([line.id for line in self.menu.lines()][-3:], ids[-3:])


class PowerProfileTest(MenuCase):
    def test_power_saver_has_a_line(self):
        command = [sys.executable, "-m", "dbusmock", "--system", "--template",
                   "power_profiles_daemon"]
        self.power.processes.start("profiles", command, {**os.environ, **self.power.environment})
        self.addCleanup(self.power.processes.stop, "profiles")
        wait_until(lambda: self.power.bus.has_owner(PROFILES), "the power profiles")
        self.power.set("online=1", "status=Full", "capacity=100")
        self.start()
        for profile, lines in [
            ("power-saver", ["-Low Power Mode Enabled"]),
            ("performance", []),
            ("power-saver", ["-Low Power Mode Enabled"]),
        ]:
            choice = (PROFILES, "ActiveProfile", GLib.Variant("s", profile))
            self.power.bus.call(PROFILES, "/net/hadess/PowerProfiles",
                                "org.freedesktop.DBus.Properties", "Set",
                                GLib.Variant("(ssv)", choice))
            self.shows(["-Fully Charged", "-Power Adapter", *lines])


class KernelTest(MenuCase):
    """The states that the kernel alone tells, of other batteries and without an adapter."""

    def test_lines_of_each_state(self):
        unknown = "-Calculating Time Remaining…"
        # supplies, changes of the tree, lines, what else is different
        for names, changes, lines, readings in [
            (("AC", "BAT0"), (), ["-57%", unknown, "-Battery"], {}),
            (("AC", "BAT0"), ("energy_full_design=80000000",), ["-57%", unknown, "-Battery"],
             {"condition": "Fair", "health": "71%"}),
            (("AC", "BAT0"), ("energy_full_design=150000000",), ["-57%", unknown, "-Battery"],
             {"condition": "Poor", "health": "38%"}),
            (("AC", "BAT0"), ("energy_full_design=0",), ["-57%", unknown, "-Battery"],
             {"health": ""}),
            (("BAT0",), (), ["-57%", unknown, "-Battery"], {}),
            (("BAT0",), ("status=Charging",),
             ["-57%", *with_time("2h 34m", 154, on_power=True), "-Power Adapter"], {}),
            # Nobody tells of an adapter: it counts as connected.
            (("BAT0",), ("status=Unknown",), ["-57%", "-Not Charging", "-Power Adapter"], {}),
            (("AC", "BAT0", "BAT1"), ("BAT1.capacity=43",), ["-50%", unknown, "-Battery"], {}),
            (("AC", "BAT0", "UPS0"), ("UPS0.type=UPS", "UPS0.capacity=99"),
             ["-57%", unknown, "-Battery"], {}),
        ]:
            with self.subTest(names=names, changes=changes):
                tree = SupplyDirectory(self.temporary_directory() / "power_supply", names)
                tree.set(*changes)
                self.start(KELVANE_POWER_SUPPLY=str(tree.path), KELVANE_UPOWER="no")
                self.shows(lines, **readings)
                self.assertEqual(self.running.terminate(), 0, self.running.output())


class HostileTest(MenuCase):
    def test_strangers_change_nothing(self):
        self.power.set("online=1", "status=Not charging", "capacity=80")
        self.start()
        lines = ["-80%", "-Not Charging", "-Power Adapter"]
        self.shows(lines)
        before = self.menu.lines()
        self.stops_growing(self.send_flood)
        self.stops_growing(self.send_nonsense)
        self.assertEqual(self.menu.lines(), before)
        self.shows(lines)
        self.assertEqual(self.desk.notices.posted(), [])
        self.power.set("capacity=79")
        self.shows(["-79%", *lines[1:]])

    def stops_growing(self, send):
        """What waits to be read needs room, which is kept; a leak grows with every round."""
        sizes = [memory(self.running.process.pid).rss]
        for _ in range(ROUNDS):
            send()
            sizes.append(memory(self.running.process.pid).rss)
            if sizes[-1] - sizes[-2] < ALLOWED_GROWTH or os.environ.get("KELVANE_SANITIZE"):
                print(f"{send.__name__}: {sizes} kB")
                return
        self.fail(f"{send.__name__}: {sizes} kB")

    def send_flood(self):
        """Thousands of events, no answer awaited but the last."""
        deaf = [line.id for line in self.menu.lines() if not line.properties.get("enabled", False)]
        choice = random.Random(7)
        for number in range(10_000):
            where = choice.choice([*deaf, -1, 0, 99, 2**31 - 1, -(2**31)])
            kind = choice.choice(["clicked", "opened", "opened", "closed", "hovered", "", "x" * 99])
            self.send("Event", "(isvu)", where, kind, GLib.Variant("s", "x" * (number % 300)), 0)
        for kind in ("opened", "closed") * 10_000:  # each pair is a redraw, if taken at its word
            self.send("Event", "(isvu)", 0, kind, GLib.Variant("i", 0), 0)
        self.assertTrue(self.menu.labels())

    def send_nonsense(self):
        """Calls of every kind that make no sense."""
        ids = list(range(100, 20_000))
        events = [(number, "clicked", GLib.Variant("i", 0), 0) for number in ids]
        calls = [
            ("EventGroup", "(a(isvu))", events),
            ("AboutToShowGroup", "(ai)", [0] * 50_000),
            ("AboutToShowGroup", "(ai)", ids),
            ("GetGroupProperties", "(aias)", ids, ["label"] * 5000),
            ("GetLayout", "(iias)", 0, 2**31 - 1, ["x" * 100_000]),
            ("GetLayout", "(iias)", -7, -(2**31), []),
            ("GetProperty", "(is)", 0, "x" * 100_000),
            ("Event", "(ss)", "0", "clicked"),
            ("AboutToShow", "(u)", 0),
            ("GetLayout", "()"),
            ("NoSuchMethod", "(i)", 0),
        ]
        for method, signature, *arguments in calls:
            with contextlib.suppress(GLib.Error):
                self.menu.bus.call(self.menu.service, self.menu.path, INTERFACE, method,
                                   GLib.Variant(signature, tuple(arguments)))
        self.assertTrue(self.menu.labels())

    def send(self, method, signature, *arguments):
        message = Gio.DBusMessage.new_method_call(
            self.menu.service, self.menu.path, INTERFACE, method)
        message.set_flags(Gio.DBusMessageFlags.NO_REPLY_EXPECTED)
        message.set_body(GLib.Variant(signature, arguments))
        self.menu.bus.connection.send_message(message, Gio.DBusSendMessageFlags.NONE)


if __name__ == "__main__":
    unittest.main()
