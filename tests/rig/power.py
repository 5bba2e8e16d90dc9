"""Power: the real upowerd on a private system bus, over a fake /sys that tests change."""

import json
import os
import pathlib
import subprocess
import sys

from gi.repository import GLib

from . import supplies
from .bus import Bus
from .fixture import Fixture
from .private_bus import start_bus
from .processes import Processes, wait_until

UPOWER = "org.freedesktop.UPower"
DISPLAY_DEVICE = "/org/freedesktop/UPower/devices/DisplayDevice"
_DISCHARGING = 2  # UPower's State
_PRELOAD = "libumockdev-preload.so.0"
_UPOWERD = ("/usr/libexec/upowerd", "/usr/lib/upower/upowerd", "/usr/lib/upowerd")
# umockdev names a listener's socket by the number of its descriptor: a listener takes away the
# uevents of another one with the same number, or of a dead one that was not yet found out. So each
# upowerd gets numbers of its own, above those of the programs under test. They are copies of the
# standard input: opening a device would have the preload library connect to the testbed each time,
# which ended the program now and then.
_TAKING_DESCRIPTORS = (
    "bash",
    "-c",
    'for ((n = 3; n < $1; n++)); do eval "exec $n<&0"; done; shift; exec "$@"',
    "upowerd",
)


class Power(Fixture):
    """An adapter AC and a battery BAT0 at 57 %, on battery; login1 is a mock."""

    def __init__(self, directory, upower=True):
        self._directory = pathlib.Path(directory)
        self.names = ["AC", "BAT0"]
        self._with_upower = upower
        self._starts = 0  # of upowerd
        self.processes = Processes(self._directory / "log")

    @property
    def environment(self):
        """For programs that use UPower."""
        return {"DBUS_SYSTEM_BUS_ADDRESS": self.address}

    @property
    def mock_environment(self):
        """For programs that read /sys or listen to uevents themselves."""
        return {**self.environment, "UMOCKDEV_DIR": self.root, "LD_PRELOAD": _PRELOAD}

    @property
    def power_supply(self):
        """The fake tree's directory of supplies, for programs that take one."""
        return f"{self.root}/sys/class/power_supply"

    def set(self, *assignments):
        """Changes attributes, then tells of each supply touched, as the kernel does."""
        for supply in self.set_silently(*assignments):
            self._ask("changed", supply)

    def set_silently(self, *assignments):
        """Changes attributes without a uevent; gives the supplies touched, in order."""
        touched = {}
        for supply, attribute, value in supplies.changes(assignments):
            self._ask("set", supply, attribute, value)
            touched[supply] = True
        return list(touched)

    def touch(self, supply="BAT0"):
        """A uevent with nothing changed: UPower then changes its UpdateTime and no more."""
        self._ask("changed", supply)

    def plug(self):
        self.set(*supplies.plugged(self.names, True))

    def unplug(self):
        self.set(*supplies.plugged(self.names, False))

    def add(self, name, **attributes):
        """A supply that comes: one at 57 %, but for the attributes given."""
        self._ask("add", name, {**supplies.attributes(name), **attributes})
        self.names.append(name)

    def remove(self, name):
        self.names.remove(name)
        self._ask("remove", name)

    def sleep(self):
        self._prepare_for_sleep(True)

    def wake(self):
        self._prepare_for_sleep(False)

    def reset(self):
        """Back to 57 % on battery, and waits until UPower says so too."""
        for name in self.names:
            told = [f"{name}.{key}={value}" for key, value in supplies.attributes(name).items()]
            self.set(*told)
        if self.has_upower():
            wait_until(self._is_reset, lambda: f"UPower at 57 %: {self.display_device()}")

    def display_device(self):
        """The properties of UPower's composite battery."""
        return self.bus.properties(UPOWER, DISPLAY_DEVICE, f"{UPOWER}.Device")

    def record(self, path=DISPLAY_DEVICE):
        """Records the property changes UPower tells of one of its objects; None is all of them."""
        properties = "org.freedesktop.DBus.Properties"
        return self.bus.record(sender=UPOWER, path=path, interface=properties)

    def start_upower(self):
        """Starts upowerd and waits until it has found the supplies."""
        history = self._directory / "history"
        history.mkdir(exist_ok=True)
        program = next((path for path in _UPOWERD if os.path.exists(path)), _UPOWERD[0])
        environment = {**os.environ, **self.mock_environment, "UPOWER_HISTORY_DIR": str(history)}
        self._starts += 1
        # By the time a number comes again, its last listener has long been found dead.
        taken = str(40 + 20 * (self._starts % 16))
        self.processes.start("upowerd", [*_TAKING_DESCRIPTORS, taken, program, "-v"], environment)
        wait_until(self._upower_is_ready, "upowerd")

    def stop_upower(self):
        self.processes.stop("upowerd")

    def has_upower(self):
        return self.processes.is_running("upowerd")

    def _start(self):
        self._directory.mkdir(parents=True, exist_ok=True)
        testbed = self.processes.start(
            "testbed",
            [sys.executable, "-B", pathlib.Path(__file__).with_name("testbed.py")],
            {**os.environ, "LD_PRELOAD": _PRELOAD},
            stdin=subprocess.PIPE,
            stdout=subprocess.PIPE,
            text=True,
        )
        self._testbed = testbed
        self.root = json.loads(testbed.stdout.readline())
        for name in self.names:
            self._ask("add", name, supplies.attributes(name))
        self.address = start_bus(self.processes, self._directory, "system")
        self.bus = Bus(self.address)
        command = [sys.executable, "-m", "dbusmock", "--system", "--template", "logind"]
        self.processes.start("logind", command, {**os.environ, **self.environment})
        login1 = "org.freedesktop.login1"
        wait_until(lambda: self.bus.has_owner(login1), "the mock of login1")
        if self._with_upower:
            self.start_upower()

    def _ask(self, *request):
        self._testbed.stdin.write(json.dumps(request) + "\n")
        self._testbed.stdin.flush()
        wrong = json.loads(self._testbed.stdout.readline())
        if wrong:
            raise RuntimeError(f"{request}: {wrong}")

    def _prepare_for_sleep(self, begins):
        arguments = GLib.Variant(
            "(sssav)",
            ("org.freedesktop.login1.Manager", "PrepareForSleep", "b", [GLib.Variant("b", begins)]),
        )
        self.bus.call(
            "org.freedesktop.login1", "/org/freedesktop/login1",
            "org.freedesktop.DBus.Mock", "EmitSignal", arguments,
        )

    def _is_reset(self):
        device = self.display_device()
        return round(device["Percentage"]) == 57 and device["State"] == _DISCHARGING

    def _upower_is_ready(self):
        try:
            found = self.bus.call(UPOWER, "/org/freedesktop/UPower", UPOWER, "EnumerateDevices")[0]
        except GLib.Error:
            return False
        return len(found) == len(self.names)
