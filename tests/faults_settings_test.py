"""Settings under stress: many writers at once, broken files, a full disk, another country."""

import json
import os
import plistlib
import random
import subprocess
import unittest

from rig import faults
from rig.bus import Bus
from rig.case import CommandCase, DeskCase
from rig.kelvane import Kelvane, preferences_file, program, run
from rig.private_bus import start_bus
from rig.processes import Processes, wait_until
from rig.supplies import SupplyDirectory

ROUNDS = 40
WRITERS = ("showPercentage", "largeIcon", "oldIconStyle", "smallMenuBarText")
LEVELS = "notifyAtPercentagesOnBattery"
FOREIGN = {"theirs": {"a": [1, 2.5, b"x"]}, "Another Key": "kept"}


class WritersTest(DeskCase):
    notifier = "none"

    def test_four_writers_of_four_keys(self):
        """Each stores its own key; none is lost, nor what other programs keep in the file."""
        kelvane = self.start_with_foreign_keys()
        before = kelvane.item().picture()
        chance = random.Random(4)
        for _ in range(ROUNDS):
            values = {key: chance.choice([True, False]) for key in WRITERS}
            self.write(kelvane, values.items())
            kept = kelvane.preferences()
            self.assertEqual({key: kept[key] for key in WRITERS}, values)
        self.write(kelvane, [(key, key == "oldIconStyle") for key in WRITERS])
        self.keeps_foreign_keys(kelvane)
        # The running one has heard of all: a fresh one shows the same.
        followed = lambda: kelvane.item().picture() != before
        wait_until(followed, "the running program to follow")
        faults.settled(kelvane.process.pid)
        after = kelvane.item().picture()
        self.assertEqual(kelvane.terminate(), 0)
        again = self.start_kelvane(directory=kelvane.directory)
        faults.settled(again.process.pid)
        self.assertEqual(again.item().picture(), after)
        faults.say("four writers of four keys", len(WRITERS) * (ROUNDS + 1))

    def test_four_writers_of_one_key(self):
        kelvane = self.start_with_foreign_keys()
        for number in range(ROUNDS):
            wanted = [[writer / 10, (number + 50) / 100] for writer in range(4)]
            self.write(kelvane, [(LEVELS, levels) for levels in wanted])
            self.assertIn(kelvane.preferences()[LEVELS], wanted)
        self.keeps_foreign_keys(kelvane)
        faults.say("four writers of one key", 4 * ROUNDS)

    def test_file_that_breaks_while_it_is_followed(self):
        """What was known stays until the file can be read again."""
        kelvane = self.start_with_foreign_keys()
        shown, default = kelvane.item(), kelvane.item().picture()
        self.write(kelvane, [("oldIconStyle", True)])
        wait_until(lambda: shown.picture() != default, "the other style")
        faults.settled(kelvane.process.pid)
        picture = shown.picture()
        whole = kelvane.preferences_file.read_bytes()
        sizes = range(0, whole.index(b"</dict>"), len(whole) // 40)
        for size in sizes:
            kelvane.preferences_file.write_bytes(whole[:size])
            self.assertEqual(shown.picture(), picture)
        faults.settled(kelvane.process.pid)
        self.assertEqual(shown.picture(), picture)
        kelvane.preferences_file.write_bytes(whole.replace(b"oldIconStyle", b"elsewise"))
        wait_until(lambda: shown.picture() == default, "the file to be followed again")
        faults.say("file broken while it is followed", len(sizes))

    def start_with_foreign_keys(self):
        kelvane = self.kelvane()
        file = kelvane.preferences_file
        file.write_bytes(plistlib.dumps({**kelvane.preferences(), **FOREIGN}))
        return self.start_kelvane(directory=kelvane.directory)

    def write(self, kelvane, settings):
        """Stores all at once, each by a process of its own; the file can be read all the while."""
        writers = [
            subprocess.Popen([program(), "settings", "set", key, json.dumps(value)],
                             env=kelvane.environment)
            for key, value in settings
        ]
        while None in [writer.poll() for writer in writers]:
            self.keeps_foreign_keys(kelvane)
        self.assertEqual([writer.returncode for writer in writers], [0] * len(writers))

    def keeps_foreign_keys(self, kelvane):
        kept = kelvane.preferences()
        self.assertEqual({key: kept.get(key) for key in FOREIGN}, FOREIGN)


class TruncatedTest(CommandCase):
    def test_every_beginning_of_a_file(self):
        for key, value in (("largeIcon", "true"), (LEVELS, "[0.2]")):
            self.run_kelvane("settings", "set", key, value)
        whole = self.file.read_bytes()
        listed = self.listed()
        defaults = self.listed(b"<plist><dict/></plist>")
        self.assertNotEqual(listed, defaults)
        for size in range(len(whole)):
            part = whole[:size]
            shown, complaint = self.listed(part)
            kept = list(self.file.parent.glob("*.corrupt-*"))
            if complaint:
                self.assertEqual((shown, len(complaint.splitlines())), (defaults[0], 1))
                self.assertEqual([file.read_bytes() for file in kept], [part])
                plistlib.loads(self.file.read_bytes())
                kept[0].unlink()
            else:  # All values are there, and only the end is missing.
                self.assertEqual((shown, kept), (listed[0], []))
                self.assertIn(b"</dict>", part)
        faults.say("truncated file", len(whole))

    @property
    def file(self):
        return preferences_file(self.environment)

    def listed(self, content=None):
        """What is listed and complained of, with that content of the file."""
        if content is not None:
            self.file.write_bytes(content)
        done = self.run_kelvane("settings", "list")
        return done.stdout, done.stderr


class FullDiskTest(CommandCase):
    # A small disk at the place of its preferences, which holds the same, and is full.
    SMALL_DISK = """
        set -e
        cp -a "$1" "$1.kept"
        mount -t tmpfs -o size=32k none "$1"
        cp -a "$1.kept/." "$1"
        head -c 64k /dev/zero >"$1/filler" 2>/dev/null || shift
        exec "$@"
    """
    ROUNDS = 20

    def test_full_disk(self):
        folder = self.directory / "run" / "config"
        # Its own mounts; who may not have them as he is may as the ruler of a space of his own.
        alone = [] if os.geteuid() == 0 else ["--map-current-user", "--keep-caps"]
        wrapper = ["unshare", "--mount", *alone, "sh", "-c", self.SMALL_DISK, "sh", str(folder)]
        with Processes(self.directory) as processes:
            address = start_bus(processes, self.directory, "session")
            tree = SupplyDirectory(self.directory / "power_supply")
            environment = {**self.environment, "DBUS_SESSION_BUS_ADDRESS": address,
                           "KELVANE_POWER_SUPPLY": str(tree.path), "KELVANE_UPOWER": "no"}
            bus = self.enter(Bus(address))
            kelvane = self.enter(Kelvane(self.directory / "run", environment, bus, wrapper=wrapper))
            complaint = wait_until(kelvane.output, "its complaint")
            self.assertIn("No space left", complaint)
            # As the program sees it.
            small = f"/proc/{kelvane.process.pid}/root{folder}"
            kelvane.environment = {**kelvane.environment, "XDG_CONFIG_HOME": small}
            filler = preferences_file(kelvane.environment).parent.parent / "filler"
            self.assertNotIn("Tq_launchCount", kelvane.preferences())
            for number in range(self.ROUNDS):
                value = number % 2 == 0
                self.fails(kelvane, value)
                size = filler.stat().st_size
                filler.unlink()
                kelvane.set("largeIcon", json.dumps(value))
                # Where others found room, what the running program could not store finds it, too.
                stored = lambda: kelvane.preferences().get("Tq_launchCount") == 1
                wait_until(stored, lambda: f"the count: {kelvane.preferences()}")
                self.assertIs(kelvane.preferences()["largeIcon"], value)
                self.fill(filler, size)
            self.assertEqual((kelvane.terminate(), kelvane.output()), (0, complaint))
            self.assertEqual(len(complaint.splitlines()), 1)
        faults.say("full disk", self.ROUNDS)

    def fails(self, kelvane, value):
        folder = kelvane.preferences_file.parent
        files = lambda: {file.name: file.read_bytes() for file in folder.iterdir()}
        before = files()
        done = kelvane.run("settings", "set", "largeIcon", json.dumps(value))
        self.assertEqual((done.returncode, len(done.stderr.splitlines())), (1, 1), done.stderr)
        self.assertIn("No space left", done.stderr)
        self.assertEqual(files(), before)

    @staticmethod
    def fill(filler, size):
        with open(filler, "wb", buffering=0) as file:
            try:
                while True:
                    file.write(bytes(4096))
            except OSError:
                pass


class LocaleTest(DeskCase):
    def test_decimal_commas(self):
        """All levels keep their values through commands, the running program and its restarts."""
        locales = self.temporary_directory()
        subprocess.run(["localedef", "-i", "de_DE", "-f", "UTF-8", locales / "de_DE.UTF-8"],
                       check=True)
        german = {"LOCPATH": str(locales), "LC_ALL": "de_DE.UTF-8", "LANG": "de_DE.UTF-8"}
        comma = subprocess.run(["printf", "%.1f", "0,5"], env={**os.environ, **german},
                               capture_output=True, text=True)
        self.assertEqual((comma.stdout, comma.stderr), ("0,5", ""))
        levels = [number / 100 for number in range(101)]
        directory = self.temporary_directory()
        kelvane = self.kelvane(variables=german, directory=directory)
        kelvane.set(LEVELS, json.dumps(levels))
        told = (29, 7, 58)
        for level in told:
            kelvane = self.start_kelvane(variables=german, directory=directory)
            menu = kelvane.item()
            kelvane.set("largeIcon", json.dumps(level == 7))
            self.assertEqual(kelvane.preferences()[LEVELS], levels)
            got = run(kelvane.environment, "settings", "get", LEVELS).stdout
            self.assertEqual(json.loads(got), levels)
            self.desk.notices.clear()
            self.power.set(f"capacity={level}")
            faults.wait_for_line(menu, f"{level}%", "the change")
            texts = self.desk.notices.texts
            wait_until(lambda: (f"{level}%", "") in texts(), lambda: f"{level} %: {texts()}")
            self.assertEqual(kelvane.terminate(), 0)
        self.assertEqual(kelvane.preferences()[LEVELS], levels)
        faults.say("level where the decimal sign is a comma", len(levels) * len(told))


if __name__ == "__main__":
    unittest.main()
