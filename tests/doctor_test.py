"""`kelvane doctor` on desks that have everything, that lack something, and that hang."""

import json
import os
import pathlib
import plistlib
import signal
import time
import unittest

from rig.case import CommandCase, DeskCase
from rig.fake_watcher import FakeWatcher
from rig.kelvane import IDENTIFIER, preferences_file, program, run
from rig.private_bus import start_bus
from rig.processes import Processes
from rig.supplies import SupplyDirectory

ENTRY = "[Desktop Entry]\nType=Application\nExec={}\n"


def entry_file(environment):
    folder = pathlib.Path(environment["XDG_CONFIG_HOME"]) / "autostart"
    folder.mkdir(parents=True, exist_ok=True)
    return folder / f"{IDENTIFIER}-AutoStartHelper.desktop"


def parts(line):
    """Verdict, subject and text of a line; of one that says what to do only the last."""
    return line[:9].rstrip(), line[9:24].rstrip(), line[24:]


class DoctorCase:
    def diagnosis(self, environment, *words, code=0):
        """The lines about each subject, with what to do about it."""
        done = run(environment, *words, "doctor")
        self.assertEqual((done.returncode, done.stderr), (code, ""), done.stdout)
        found = {}
        for line in done.stdout.splitlines():
            verdict, subject, text = parts(line)
            if subject:
                last = subject
                text = f"{verdict}: {text}"
            found.setdefault(last, []).append(text)
        return found


class DeskTest(DoctorCase, DeskCase):
    def test_all_is_well(self):
        kelvane = self.start_kelvane()
        kelvane.item()
        helper = pathlib.Path(program()).with_name("kelvane-autostart-helper")
        entry = entry_file(kelvane.environment)
        entry.write_text(ENTRY.format(helper))
        found = self.diagnosis(kelvane.environment)
        self.assertRegex(found.pop("tray")[0],
                         r"^ok: Xfce \(process panel-\d+-systray\)$")
        self.assertRegex(found.pop("notifications")[0], r"^ok: dunst [^:]+:.* actions .*body")
        self.assertEqual(found.pop("portal")[0],
                         "note: none, so the desktop’s light or dark may not be known")
        version = self.power.bus.property(
            "org.freedesktop.UPower", "/org/freedesktop/UPower", "org.freedesktop.UPower",
            "DaemonVersion",
        )
        self.assertEqual(found, {
            "session bus": ["ok: " + self.desk.environment["DBUS_SESSION_BUS_ADDRESS"]],
            "shape": ["ok: a square of 22 points, which suits Xfce"],
            "scale": ["ok: 1, says xfconf"],
            "colours": ["ok: light bar: the glyph is dark; no preference for windows"],
            "Kelvane": ["ok: it runs, the tray has its item: 22×22 pixels"],
            "UPower": [f"ok: version {version}"],
            "battery": ["ok: BAT0, 57 %"],
            "login": [f"ok: started by {entry}"],
            "preferences": [f"ok: {kelvane.preferences_file}, mode 0600"],
        })
        report = json.loads(kelvane.run("doctor", "--json").stdout)
        self.assertTrue(report["canBeSeen"])
        self.assertEqual([each["subject"] for each in report["findings"]][:2],
                         ["session bus", "tray"])

    def test_what_is_set_instead(self):
        kelvane = self.start_kelvane()
        item = kelvane.item()
        self.changes_picture(item, lambda: kelvane.set("trayIconShape", '"wide"'), "the wide shape")
        self.changes_picture(item, lambda: kelvane.set("trayIconColor", '"light"'), "the light one")
        found = self.diagnosis(kelvane.environment)
        self.assertEqual(
            found["shape"],
            ["ok: 22 points high, as wide as the item, says the setting trayIconShape"],
        )
        self.assertEqual(
            found["colours"],
            ["ok: the glyph is light, says the setting trayIconColor; no preference for windows"],
        )
        width, height, _ = item.picture()
        self.assertGreater(width, height)
        self.assertEqual(found["Kelvane"],
                         [f"ok: it runs, the tray has its item: {width}×{height} pixels"])

    def test_without_a_tray(self):
        kelvane = self.kelvane()
        self.desk.kill_panel()
        self.addCleanup(self.desk.start_panel)
        found = self.diagnosis(kelvane.environment, code=1)
        self.assertEqual(found["tray"], [
            "problem: none: nobody has the name org.kde.StatusNotifierWatcher",
            "Add the item “Status Tray Plugin” to a panel (Panel › Add New Items…).",
        ])
        self.assertEqual(found["Kelvane"], ["note: it does not run", "Start it: kelvane"])
        self.assertFalse({"shape", "scale", "colours"} & set(found))

    def test_without_upower(self):
        self.power.stop_upower()
        self.addCleanup(self.power.start_upower)
        found = self.diagnosis(self.kelvane().environment)
        tree = f"the kernel’s files in {self.power.power_supply} serve"
        self.assertEqual(found["UPower"][0], f"note: it is not there: {tree}")
        self.assertEqual(found["battery"], ["ok: BAT0, 57 %"])

    def test_hidden_item_and_peripheral_battery(self):
        self.power.add("pen0", scope="Device", capacity="12")
        self.addCleanup(self.power.remove, "pen0")
        self.power.plug()
        kelvane = self.start_kelvane()
        kelvane.item()
        kelvane.set("hideIconWhenOnPower", "true")
        kelvane.wait_until_gone()
        found = self.diagnosis(kelvane.environment)
        self.assertEqual(found["Kelvane"][0],
                         "note: it runs, and hides its item while on power as it is set to")
        ignored = " is not counted: it powers a device, not the computer "
        self.assertEqual(found["battery"],
                         ["ok: BAT0, 57 %", f"note: pen0{ignored}(PowerSupply=false)"])
        found = self.diagnosis(kelvane.environment, "--no-upower")
        self.assertEqual(found["battery"],
                         ["ok: BAT0, 57 %", f"note: pen0{ignored}(scope Device)"])

    def test_what_hangs_is_said_soon(self):
        pids = [self.desk.bus.process_of("org.freedesktop.Notifications"),
                self.power.bus.process_of("org.freedesktop.UPower")]
        for pid in pids:
            os.kill(pid, signal.SIGSTOP)
            self.addCleanup(os.kill, pid, signal.SIGCONT)
        began = time.monotonic()
        found = self.diagnosis(self.kelvane().environment)
        self.assertLess(time.monotonic() - began, 5)
        self.assertEqual(found["notifications"][0], "problem: the server does not answer")
        self.assertIn("it does not answer", found["UPower"][0])
        self.assertEqual(found["battery"], ["ok: BAT0, 57 %"])


class BareTest(DoctorCase, CommandCase):
    def setUp(self):
        super().setUp()
        self.tree = SupplyDirectory(self.directory / "power_supply")
        self.environment["KELVANE_POWER_SUPPLY"] = str(self.tree.path)

    def test_without_a_bus(self):
        found = self.diagnosis(self.environment, code=1)
        self.assertEqual(found["session bus"][0], "problem: none: nothing names its address")
        self.assertIn("note: no system bus", found["UPower"][0])
        self.assertEqual(found["battery"], ["ok: BAT0, 57 %"])
        self.assertEqual(set(found), {"session bus", "UPower", "battery", "login", "preferences"})
        self.assertFalse(pathlib.Path(self.environment["XDG_CONFIG_HOME"]).exists())

    def test_starts_no_service(self):
        folder = self.directory / "wanted"
        folder.mkdir()
        started = self.directory / "started"
        names = ("org.freedesktop.Notifications", "org.freedesktop.portal.Desktop", IDENTIFIER,
                 "org.kde.StatusNotifierWatcher", "org.freedesktop.UPower")
        for name in names:
            service = f"[D-BUS Service]\nName={name}\nExec=/usr/bin/touch {started}\n"
            (folder / f"{name}.service").write_text(service)
        processes = self.enter(Processes(self.directory / "log"))
        files = [file.absolute() for file in folder.iterdir()]
        address = start_bus(processes, self.directory, "session", files)
        self.environment.update(DBUS_SESSION_BUS_ADDRESS=address, DBUS_SYSTEM_BUS_ADDRESS=address)
        found = self.diagnosis(self.environment, code=1)
        self.assertEqual(found["notifications"],
                         ["ok: no server runs yet, the bus starts one when it is wanted"])
        self.assertEqual(found["UPower"],
                         ["ok: it does not run yet, the bus starts it for Kelvane"])
        self.assertEqual(found["portal"],
                         ["note: it does not run, and Kelvane does not start it"])
        self.assertFalse(started.exists())

    def test_watcher_that_nothing_shows(self):
        processes = self.enter(Processes(self.directory / "log"))
        address = start_bus(processes, self.directory, "session")
        self.environment["DBUS_SESSION_BUS_ADDRESS"] = address
        watcher = self.enter(FakeWatcher(address))
        text, remedy = self.diagnosis(self.environment, code=1)["tray"]
        self.assertRegex(text, r"^problem: .*\(process .*\) collects items, but nothing shows them$")
        self.assertRegex(remedy, "^End that process, .* Run a panel that shows")
        watcher.has_host = True
        found = self.diagnosis(self.environment)
        self.assertRegex(found["tray"][0], "^ok: a host that Kelvane does not know ")
        self.assertEqual(found["shape"], ["ok: a square of 22 points, which any host shows"])

    def test_ups_is_no_battery(self):
        (self.tree.path / "BAT0" / "type").write_text("UPS\n")
        found = self.diagnosis(self.environment, code=1)
        self.assertEqual(found["battery"][:2], [
            "note: BAT0 is not counted: it is a UPS",
            "problem: none of a laptop: Kelvane refuses to start",
        ])

    def test_files_that_are_wrong(self):
        settings, entry = preferences_file(self.environment), entry_file(self.environment)
        settings.parent.mkdir()
        settings.write_text("no property list")
        settings.chmod(0o600)
        entry.write_text(ENTRY.format("/no/such/helper"))
        found = self.diagnosis(self.environment, code=1)
        self.assertRegex(found["preferences"][0], f"^problem: {settings} can’t be read: ")
        self.assertEqual(found["login"][0],
                         f"problem: {entry} starts /no/such/helper, which is not there")
        self.assertEqual(settings.read_text(), "no property list")
        self.assertEqual(list(settings.parent.iterdir()), [settings])

        settings.write_bytes(plistlib.dumps({"largeIcon": 7, "smallIcon": True}))
        settings.chmod(0o644)
        entry.write_text(ENTRY.format(program()) + "Hidden=true\n")
        found = self.diagnosis(self.environment, code=1)
        self.assertEqual(found["preferences"], [
            f"note: {settings}, mode 0644: others have access to it",
            f"Keep it to yourself: chmod 600 {settings}",
            "problem: largeIcon is not true or false",
            "Set it anew, for example: kelvane settings set largeIcon false",
            "note: smallIcon is no setting of Kelvane’s: it is left alone",
        ])
        self.assertEqual(found["login"][0], f"note: not started: Hidden=true in {entry}")


if __name__ == "__main__":
    unittest.main()
