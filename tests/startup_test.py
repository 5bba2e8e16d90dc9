"""Kelvane's start and end: counts, refusals, one program at a time, and every way to end it."""

import datetime
import plistlib
import signal
import subprocess
import time
import unittest

from rig import item
from rig.case import DeskCase
from rig.hosts.host import WATCHER
from rig.kelvane import IDENTIFIER, program
from rig.processes import wait_until
from rig.supplies import SupplyDirectory

RECHECK = 5.0  # seconds after which a start or a reopening applies the rule of visibility
# How much later than it should a thing may be seen: this program looks for it as others work.
LATE = 0.5
CHARGING = 1  # UPower's State
REFUSAL = ("This Mac is not supported.", "Kelvane is intended for Mac laptops with a battery.")
WELCOME = (
    "kelvane: Welcome to Kelvane! If you have any feedback, bug reports, or feature requests, use "
    "the feedback button in the app. I quickly respond to all submissions.  Note: When you unplug "
    "the power adapter, the system needs some time to accurately calculate the time remaining "
    "estimate.  Kelvane can unfortunately not show “apps using significant energy” like the "
    "system battery indicator does because of restrictions imposed on apps on the App Store. However, you "
    "could change the menu bar item type to text instead of icon and use this app in combination "
    "with the system battery indicator."
)
REFUSED = f"kelvane: {REFUSAL[0]} {REFUSAL[1]}\n"


class StartCase(DeskCase):
    def assert_ended(self, done, code=0, complaint=""):
        self.assertEqual((done.returncode, done.stdout, done.stderr), (code, "", complaint))


class CountTest(StartCase):
    def test_every_start_is_counted_and_the_first_one_dated(self):
        directory = self.temporary_directory()
        began = datetime.datetime.utcnow().replace(microsecond=0)
        first = self.start_kelvane(directory=directory, welcome=True, says=[WELCOME])
        self.assertTrue(first.item())
        counted = lambda: "Tq_launchCount" in first.preferences()
        wait_until(counted, "the count of launches")
        kept = first.preferences()
        self.assertEqual(kept["Tq_launchCount"], 1)
        self.assertTrue(began <= kept["Tq_firstLaunchDate"] <= datetime.datetime.utcnow())
        # Neither another one beside it nor a command is a start.
        self.assert_ended(first.run(seconds=5))
        self.assertEqual(first.run("status").returncode, 0)
        self.assertEqual(first.preferences(), kept)
        self.assertEqual(first.terminate(), 0)

        kept["Tq_firstLaunchDate"] = datetime.datetime(2020, 2, 29, 12, 0)
        first.preferences_file.write_bytes(plistlib.dumps(kept))
        empty = {"KELVANE_POWER_SUPPLY": str(directory), "KELVANE_UPOWER": "no"}
        self.assertEqual(self.kelvane(directory=directory, variables=empty).run(seconds=5).returncode, 1)
        self.assertEqual(first.preferences(), {**kept, "Tq_launchCount": 2})
        # Of one folder, so of one log: only the first one welcomes.
        last = self.start_kelvane(directory=directory, says=[WELCOME])
        self.assertTrue(last.item())
        third = {**kept, "Tq_launchCount": 3}
        wait_until(lambda: last.preferences() == third, lambda: f"{third}: {last.preferences()}")


class RefusalTest(StartCase):
    def test_no_battery(self):
        for what in ("nothing", "a mouse", "an empty bay"):
            with self.subTest(what):
                tree = SupplyDirectory(self.temporary_directory() / "power_supply", names=())
                if what != "nothing":
                    tree.add("BAT0")
                    trait = ("scope", "Device") if what == "a mouse" else ("present", "0")
                    (tree.path / "BAT0" / trait[0]).write_text(f"{trait[1]}\n")
                self.refuses(KELVANE_POWER_SUPPLY=str(tree.path), KELVANE_UPOWER="no")

    def test_no_battery_in_upower(self):
        self.power.remove("BAT0")
        self.addCleanup(self.power.add, "BAT0")
        missing = lambda: not self.power.display_device()["IsPresent"]
        wait_until(missing, "UPower to miss the battery")
        self.refuses()

    def test_no_battery_and_nobody_to_tell(self):
        self.desk.processes.stop("notifier")
        self.addCleanup(self.desk.start_notifier)
        self.refuses(told=False, KELVANE_UPOWER="no",
                     KELVANE_POWER_SUPPLY=str(self.temporary_directory()))

    def refuses(self, told=True, **variables):
        self.desk.notices.clear()
        tray = self.desk.bus.record(interface=WATCHER)
        began = time.monotonic()
        self.assert_ended(self.kelvane(variables=variables).run(seconds=10), 1, REFUSED)
        took = time.monotonic() - began
        print(f"refused after {1000 * took:.0f} ms")
        self.assertLess(took, 2 + LATE)
        self.assertEqual(tray.members(), [])
        if told:
            notice, = wait_until(self.desk.notices.shown, "the notice", seconds=1).values()
            self.assertEqual((notice.text, notice.urgency), (REFUSAL, 2))


class SingleTest(StartCase):
    def test_hidden_item_comes_for_five_seconds_at_a_start_and_at_another_one(self):
        self.power.plug()
        on_power = lambda: self.power.display_device()["State"] == CHARGING
        wait_until(on_power, "UPower on power")
        kelvane = self.kelvane()
        kelvane.set("hideIconWhenOnPower", "true")
        kelvane = self.start_kelvane(directory=kelvane.directory)
        self.stays_for_five_seconds(kelvane, kelvane.started)
        count = kelvane.preferences()["Tq_launchCount"]
        began = time.monotonic()
        self.assert_ended(kelvane.run(seconds=5))
        self.stays_for_five_seconds(kelvane, began)
        self.assertEqual(kelvane.preferences()["Tq_launchCount"], count)

    def stays_for_five_seconds(self, kelvane, began):
        kelvane.item(seconds=1)
        kelvane.wait_until_gone(seconds=RECHECK + 2)
        took = time.monotonic() - began
        print(f"seen for {took:.2f} s")
        self.assertTrue(RECHECK <= took < RECHECK + LATE, f"{took:.2f} s")

    def test_of_starts_at_the_same_moment_one_stays(self):
        for _ in range(5):
            kelvane = self.kelvane()
            starts = [subprocess.Popen([program()], env=kelvane.environment, text=True,
                                       stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
                      for _ in range(3)]
            try:
                ended = lambda: [start for start in starts if start.poll() is not None]
                wait_until(lambda: len(ended()) >= 2, "all but one to end", seconds=5)
                self.assertEqual([start.returncode for start in ended()], [0, 0])
                self.assertEqual([start.stdout.read() for start in ended()], ["", ""])
                item.wait_for(self.desk.bus, IDENTIFIER)
                count = lambda: kelvane.preferences().get("Tq_launchCount")
                self.assertEqual(wait_until(count, "the count of launches"), 1)
                self.assertEqual(len(ended()), 2)
            finally:
                for start in starts:
                    start.terminate()
                outputs = [start.communicate(timeout=5)[0] for start in starts]
            self.assertEqual([start.returncode for start in starts], [0, 0, 0], outputs)
            kelvane.wait_until_gone()

    def test_program_that_does_not_answer(self):
        kelvane = self.start_kelvane()
        self.assertTrue(kelvane.item())
        kelvane.process.send_signal(signal.SIGSTOP)
        self.addCleanup(kelvane.process.send_signal, signal.SIGCONT)
        began = time.monotonic()
        others = [subprocess.Popen([program(), *words], env=kelvane.environment, text=True,
                                   stderr=subprocess.PIPE) for words in ([], ["quit"])]
        for other in others:
            said = other.communicate(timeout=20)[1]
            self.assertEqual((other.returncode, len(said.splitlines())), (1, 1), said)
            self.assertTrue(said.startswith("kelvane: "), said)
        print(f"given up after {time.monotonic() - began:.1f} s")
        kelvane.process.send_signal(signal.SIGCONT)
        # The request to quit reaches it now.
        self.assertEqual(kelvane.process.wait(5), 0)


class EndTest(StartCase):
    def test_ends_at_once_and_keeps_what_was_set(self):
        action = ("ActivateAction", "(sava{sv})", "quit", [], {})
        ends = [
            ("command", lambda kelvane: self.assert_ended(kelvane.run("quit", seconds=5))),
            ("action", lambda kelvane: kelvane.call(*action)),
            ("SIGTERM", lambda kelvane: kelvane.process.send_signal(signal.SIGTERM)),
            ("SIGINT", lambda kelvane: kelvane.process.send_signal(signal.SIGINT)),
        ]
        for name, end in ends:
            with self.subTest(name):
                kelvane = self.start_kelvane()
                owner = kelvane.item().owner
                kelvane.set("largeIcon", "true")
                began = time.monotonic()
                end(kelvane)
                self.assertEqual(kelvane.process.wait(5), 0)
                kelvane.wait_until_gone(seconds=1)
                self.assertFalse(self.desk.bus.has_owner(owner))
                self.assertFalse(self.desk.bus.has_owner(IDENTIFIER))
                print(f"{name}: gone after {1000 * (time.monotonic() - began):.0f} ms")
                kept = kelvane.preferences()
                self.assertEqual((kept["largeIcon"], kept["Tq_launchCount"]), (True, 1))

    def test_what_it_has_just_written_survives_its_end(self):
        kelvane = self.start_kelvane()
        claimed = lambda: self.desk.bus.has_owner(IDENTIFIER)
        wait_until(claimed, "the name on the bus", interval=0.001)
        self.assert_ended(kelvane.run("quit", seconds=5))
        self.assertEqual(kelvane.process.wait(5), 0)
        self.assertEqual(kelvane.preferences()["Tq_launchCount"], 1)

    def test_nothing_to_quit(self):
        done = self.kelvane().run("quit", seconds=5)
        self.assertEqual((done.returncode, len(done.stderr.splitlines())), (1, 1), done.stderr)


if __name__ == "__main__":
    unittest.main()
