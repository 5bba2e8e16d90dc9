"""What is installed: all of it, where it belongs, and it works from there."""

import configparser
import contextlib
import os
import pathlib
import re
import shutil
import stat
import subprocess
import tempfile
import unittest
import unittest.mock
import xml.etree.ElementTree as ElementTree

from gi.repository import GLib

from rig.bus import Bus
from rig.case import CommandCase
from rig.desk import Desk
from rig.kelvane import APPLICATION, IDENTIFIER, program, say_launched_before
from rig.private_bus import start_bus
from rig.processes import Processes, wait_until
from rig.supplies import SupplyDirectory

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = pathlib.Path(program()).resolve().parents[3]
PROGRAMS = {
    "bin/kelvane",
    *(f"libexec/kelvane/kelvane-{name}" for name in ("autostart-helper", "commands", "windows")),
}
ICON_SIZES = (16, 22, 24, 32, 48, 64, 128, 256)
SCRIPT = "share/doc/kelvane/examples/i3status-kelvane"
FILES = {
    "lib/systemd/user/kelvane.service",
    f"share/applications/{IDENTIFIER}.desktop",
    "share/bash-completion/completions/kelvane",
    f"share/dbus-1/services/{IDENTIFIER}.service",
    "share/fish/vendor_completions.d/kelvane.fish",
    *(f"share/icons/hicolor/{n}x{n}/apps/{IDENTIFIER}.png" for n in ICON_SIZES),
    *(f"share/doc/kelvane/examples/{name}"
      for name in ("i3status.conf", "waybar.css", "waybar.jsonc")),
    f"share/icons/hicolor/scalable/apps/{IDENTIFIER}.svg",
    f"share/icons/hicolor/symbolic/apps/{IDENTIFIER}-symbolic.svg",
    "share/man/man1/kelvane.1",
    f"share/metainfo/{IDENTIFIER}.metainfo.xml",
    "share/zsh/site-functions/_kelvane",
}


def sections(path):
    """The groups of a desktop file, a bus service or a unit."""
    parser = configparser.ConfigParser(interpolation=None, strict=True)
    parser.optionxform = str
    parser.read_string(path.read_text())
    return parser


def children(process):
    """The programs that a process has started and that still run."""
    numbers = pathlib.Path(f"/proc/{process}/task/{process}/children").read_text().split()
    with contextlib.suppress(FileNotFoundError):
        return [os.readlink(f"/proc/{number}/exe") for number in numbers]
    return []


class InstallTest(CommandCase):
    @classmethod
    def setUpClass(cls):
        folder = cls.enterClassContext(tempfile.TemporaryDirectory(prefix="kelvane-"))
        cls.prefix = pathlib.Path(folder) / "prefix"
        subprocess.run(["cmake", "--install", BUILD, "--prefix", cls.prefix], check=True,
                       stdout=subprocess.DEVNULL)
        # From here on it is the installed one that is run.
        cls.enterClassContext(unittest.mock.patch.dict(
            os.environ, KELVANE=str(cls.prefix / "bin/kelvane")))

    def test_every_file_and_no_other(self):
        modes = {
            str(file.relative_to(self.prefix)): stat.S_IMODE(file.stat().st_mode)
            for file in self.prefix.rglob("*") if file.is_file()
        }
        expected = {**dict.fromkeys({*PROGRAMS, SCRIPT}, 0o755), **dict.fromkeys(FILES, 0o644)}
        self.assertEqual(modes, expected)

    def test_libraries_are_found_the_usual_way(self):
        for name in sorted(PROGRAMS):
            said = subprocess.run(["readelf", "--dynamic", self.prefix / name], check=True,
                                  capture_output=True, text=True).stdout
            self.assertIn("NEEDED", said)
            self.assertNotRegex(said, "RPATH|RUNPATH", name)

    def test_commands_run(self):
        tree = SupplyDirectory(self.directory / "supplies")
        source = ("--no-upower", "--power-supply", str(tree.path))
        self.assertIn("57", self.run_kelvane(*source, "status").stdout)

    def test_the_bus_starts_it_and_it_shows_its_windows(self):
        desk = self.enter(Desk(self.directory / "desk", "none", "none"))
        tree = SupplyDirectory(self.directory / "supplies")
        environment = {**desk.environment, "KELVANE_UPOWER": "no",
                       "KELVANE_POWER_SUPPLY": str(tree.path)}
        say_launched_before(environment)
        services = [self.prefix / f"share/dbus-1/services/{IDENTIFIER}.service"]
        processes = self.enter(Processes(self.directory / "log"))
        bus = Bus(start_bus(processes, self.directory, "session", services, environment))
        self.addCleanup(bus.close)
        act = lambda action: bus.call(*APPLICATION, "ActivateAction",
                                      GLib.Variant("(sava{sv})", (action, [], {})))
        bus.call(*APPLICATION, "Activate", GLib.Variant("(a{sv})", ({},)), may_start=True)
        kelvane = bus.process_of(IDENTIFIER)
        self.assertEqual(os.readlink(f"/proc/{kelvane}/exe"), str(self.prefix / "bin/kelvane"))
        act("preferences")
        windows = str(self.prefix / "libexec/kelvane/kelvane-windows")
        wait_until(lambda: windows in children(kelvane), "the program of the windows")
        act("quit")
        wait_until(lambda: not bus.has_owner(IDENTIFIER), "its end")

    def test_what_files_name_is_there(self):
        installed = str(self.prefix / "bin/kelvane")
        share = self.prefix / "share"
        service = sections(share / f"dbus-1/services/{IDENTIFIER}.service")["D-BUS Service"]
        self.assertEqual((service["Name"], service["Exec"]), (IDENTIFIER, installed))
        unit = sections(self.prefix / "lib/systemd/user/kelvane.service")
        self.assertEqual(unit["Service"]["ExecStart"], installed)

        path = f"{self.prefix}/bin:/usr/bin:/bin"
        desktop = sections(share / f"applications/{IDENTIFIER}.desktop")
        entry = desktop["Desktop Entry"]
        for group in desktop.sections():
            command = desktop[group]["Exec"].split()
            found = shutil.which(command[0], path=path)
            self.assertTrue(found, command)
            if command[0] == "kelvane":
                self.assertEqual(found, installed)
        actions = {f"Desktop Action {name}" for name in entry["Actions"].strip(";").split(";")}
        self.assertEqual(actions, {"Desktop Action preferences", "Desktop Action quit"})
        self.assertEqual({"Desktop Entry", *actions}, set(desktop.sections()))
        self.assertEqual(entry["Icon"], IDENTIFIER)

        about = ElementTree.parse(share / f"metainfo/{IDENTIFIER}.metainfo.xml").getroot()
        self.assertEqual(about.findtext("launchable"), f"{IDENTIFIER}.desktop")

    def test_versions_agree(self):
        version = self.run_kelvane("--version").stdout.split()[-1]
        about = ElementTree.parse(self.prefix / f"share/metainfo/{IDENTIFIER}.metainfo.xml")
        self.assertEqual(about.find("releases/release").get("version"), version)
        changes = (ROOT / "packaging/deb/changelog").read_text()
        self.assertEqual(re.match(r"kelvane \((.*?)\)", changes)[1], version)


if __name__ == "__main__":
    unittest.main()
