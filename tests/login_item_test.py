"""The program that the desktop starts at login waits for the session bus and becomes kelvane."""

import pathlib
import signal
import subprocess
import unittest

from gi.repository import GLib

from rig import meter
from rig.bus import Bus
from rig.case import CommandCase
from rig.kelvane import APPLICATION, IDENTIFIER, program, say_launched_before
from rig.private_bus import start_bus
from rig.processes import Processes, wait_until
from rig.supplies import SupplyDirectory


class LoginTest(CommandCase):
    def setUp(self):
        super().setUp()
        self.environment["KELVANE_UPOWER"] = "no"
        say_launched_before(self.environment)
        supplies = SupplyDirectory(self.directory / "power_supply")
        self.environment["KELVANE_POWER_SUPPLY"] = str(supplies.path)
        self.processes = self.enter(Processes(self.directory / "log"))
        self.runtime = pathlib.Path(self.environment["XDG_RUNTIME_DIR"])

    def test_waits_for_the_bus_of_the_runtime_folder(self):
        helper = self.start_helper()
        self.assert_waits(helper)
        # Not the one waited for.
        start_bus(self.processes, self.runtime, "session")
        self.assert_waits(helper)
        (self.runtime / "session_bus").rename(self.runtime / "bus")
        self.assert_becomes_kelvane(helper, f"unix:path={self.runtime}/bus")

    def test_waits_for_the_bus_of_the_address(self):
        folder = self.directory / "session"
        address = f"unix:path={folder}/session_bus"
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address
        helper = self.start_helper()
        self.assert_waits(helper)
        folder.mkdir()
        start_bus(self.processes, folder, "session")
        self.assert_becomes_kelvane(helper, address)

    def test_does_not_wait_for_a_bus_that_is_there(self):
        address = start_bus(self.processes, self.runtime, "session")
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address
        self.assert_becomes_kelvane(self.start_helper(), address)

    def test_can_be_called_off(self):
        helper = self.start_helper()
        self.assert_waits(helper)
        helper.terminate()
        self.assertEqual(helper.wait(5), -signal.SIGTERM)

    def start_helper(self):
        helper = pathlib.Path(program()).with_name("kelvane-autostart-helper")
        return self.processes.start("helper", [helper], self.environment)

    def assert_waits(self, helper):
        """It has begun to watch, and from then on it lives and does nothing."""
        descriptors = pathlib.Path(f"/proc/{helper.pid}/fdinfo")
        wait_until(
            lambda: any("inotify wd" in read(file) for file in descriptors.iterdir()),
            lambda: f"the helper's watch; it says {self.processes.log('helper')!r}",
        )
        wait_until(lambda: is_asleep(helper.pid), "the helper's rest")
        before = meter.activity(helper.pid)
        with self.assertRaises(subprocess.TimeoutExpired, msg="it did not wait"):
            helper.wait(0.3)
        self.assertEqual(meter.spent(before, meter.activity(helper.pid)).switches, 0)

    def assert_becomes_kelvane(self, helper, address):
        """The process is kelvane now, told of the login, on that bus, and ends as it does."""
        bus = Bus(address)
        self.addCleanup(bus.close)
        wait_until(
            lambda: bus.process_of(IDENTIFIER) == helper.pid,
            lambda: f"kelvane on the bus; it says {self.processes.log('helper')!r}",
        )
        self.assertEqual(pathlib.Path(f"/proc/{helper.pid}/exe").resolve(),
                         pathlib.Path(program()).resolve())
        self.assertEqual(read(f"/proc/{helper.pid}/cmdline"), "kelvane\0--at-login\0")
        quitting = GLib.Variant("(sava{sv})", ("quit", [], {}))
        bus.call(*APPLICATION, "ActivateAction", quitting)
        self.assertEqual(helper.wait(5), 0, self.processes.log("helper"))
        self.assertEqual(self.processes.log("helper"), "")


def read(path):
    try:
        return pathlib.Path(path).read_text()
    except FileNotFoundError:
        return ""


def is_asleep(pid):
    return read(f"/proc/{pid}/stat").rpartition(")")[2].split()[0] == "S"


if __name__ == "__main__":
    unittest.main()
