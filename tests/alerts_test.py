"""Alerts as windows: a battery running out, the welcome, the refusal; and what waits for them."""

import time
import unittest

from rig.hosts.host import WATCHER
from rig.processes import wait_until
from rig.window_case import WindowCase

LOW = "Your Mac is running out of battery and will soon sleep unless plugged into a power outlet."
KILLED = "kelvane: the window program ended by Killed"
# How much later than it should a thing may be seen, and its beginning, which makes it seem early:
# this program looks for it as others work.
LATE, EARLY = 0.5, 0.15
CLOSES_WITHIN = 0.2 + 0.2  # seconds: as often as it looks at the adapter, and until that is seen
WELCOME, HELLO = "Welcome to Kelvane!", "Hello, I'm Kelvane"
SHOWN_FOR = 5.0  # seconds
SHAKE, STEPS = 0.3, [-2, 2, -1, 1, 0]  # seconds; pixels upwards
REFUSAL = ("This Mac is not supported.", "Kelvane is intended for Mac laptops with a battery.")


class LowBatteryTest(WindowCase):
    def run_out(self):
        self.changes_picture(self.item, lambda: self.power.set("capacity=4"), "4 %")
        return self.seen.find("dialog", LOW)

    def test_holds_the_changes_back_until_it_is_closed(self):
        self.item = self.start_and_settle()
        for name, *how in [
            ("its button", lambda: self.press("push button", "OK")),
            ("a key", lambda: self.desk.key("Return", window="Kelvane")),
            ("the adapter", self.power.plug, self.closed_soon_after),
        ]:
            with self.subTest(name):
                alert = self.run_out()
                before = self.item.picture()
                self.holds_back(alert, 3, *how)
                self.assertNotEqual(self.item.picture(), before)
                if name != "the adapter":
                    self.changes_picture(self.item, lambda: self.power.set("capacity=21"), "21 %")
        self.assertEqual(self.desk.notices.texts(), [])

    def test_goes_on_as_a_notice_without_its_window(self):
        self.item = self.start(says=[KILLED, f"kelvane: {LOW}"])
        self.run_out()
        self.kill_windows()
        self.wait_for_texts(("Kelvane", LOW))
        self.assertEqual([notice.urgency for notice in self.desk.notices.posted()], [2])
        # A notice holds nothing up.
        self.changes_picture(self.item, lambda: self.power.set("capacity=3"), "3 %")
        told = self.power.record(path=None)
        self.power.plug()
        self.wait_for_texts()
        self.closed_soon_after(told)
        self.assertEqual(self.window_programs(), [])

    def closed_soon_after(self, told):
        took = time.monotonic() - told.wait_for("PropertiesChanged").time
        print(f"closed {1000 * took:.0f} ms after UPower told of the adapter")
        self.assertLess(took, CLOSES_WITHIN)


class WelcomeTest(WindowCase):
    def test_greets_at_the_first_launch_only(self):
        directory = self.temporary_directory()
        self.greet(directory=directory)
        self.wait_for_texts((HELLO, ""))
        wait_until(lambda: not self.desk.notices.shown(), "the greeting's end", SHOWN_FOR + 2)
        self.gone_after_five_seconds()
        self.assertEqual(self.running.terminate(), 0)
        self.start(directory=directory)
        self.choose("Preferences…")
        self.seen.find("frame", "Kelvane Settings")
        self.assertIsNone(self.seen.look("dialog", WELCOME))
        self.assertEqual(self.desk.notices.texts(), [(HELLO, "")])

    def test_greets_where_the_item_was_clicked(self):
        click = lambda: self.item.call("Activate", 640, 10)
        for is_clicked_again in False, True:
            with self.subTest(is_clicked_again=is_clicked_again):
                self.greet(meanwhile=click)
                popover = self.seen.find("tool tip", HELLO)
                if is_clicked_again:
                    click()
                    self.wait_until_closed(popover, LATE)
                    self.seen.find("menu", "Kelvane")
                    click()
                else:
                    self.wait_until_closed(popover, SHOWN_FOR + 2)
                    self.gone_after_five_seconds()
                self.wait_for_no_windows()
                self.assertEqual(self.running.terminate(), 0)
        self.assertEqual(self.desk.notices.texts(), [])

    def greet(self, meanwhile=lambda: None, **options):
        self.item = self.start(welcome=True, **options)
        self.seen.find("dialog", WELCOME)
        meanwhile()
        rest = self.item.picture()
        drawn = self.item.record()
        self.desk.key("Return", window="Kelvane")
        pictures = [rest]
        icons = lambda: [each.time for each in drawn.signals() if each.member == "NewIcon"]
        wait_until(lambda: self.sees(pictures) and len(icons()) == len(STEPS),
                   lambda: f"{len(STEPS)} pictures: {len(icons())}", 2, interval=0)
        self.sees(pictures)
        self.shaken = icons()[0]
        self.assertTrue(SHAKE - EARLY < icons()[-1] - self.shaken < SHAKE + LATE, icons())
        # One or the other may have been missed.
        expected = iter(moved_up(rest, step) for step in STEPS)
        self.assertTrue(all(each in expected for each in pictures[1:]), (rest, pictures))
        self.assertTrue(len(pictures) > 3 and pictures[-1] == rest, pictures)

    def sees(self, pictures):
        """Adds the item's picture, if it is another one than the last."""
        picture = self.item.picture()
        if picture != pictures[-1]:
            pictures.append(picture)
        return True

    def gone_after_five_seconds(self):
        took = time.monotonic() - self.shaken
        print(f"seen for {took:.2f} s")
        self.assertTrue(SHOWN_FOR - EARLY < took < SHOWN_FOR + LATE, took)


def moved_up(picture, rows):
    row, empty = 4 * picture.width, bytes(4 * picture.width * abs(rows))
    if rows < 0:
        return picture._replace(pixels=empty + picture.pixels[: rows * row])
    return picture._replace(pixels=picture.pixels[rows * row :] + empty)


class RefusalTest(WindowCase):
    def test_waits_for_its_button(self):
        tray = self.desk.bus.record(interface=WATCHER)
        environment = {**self.desk.environment, "KELVANE_UPOWER": "no",
                       "KELVANE_POWER_SUPPLY": str(self.temporary_directory())}
        self.running = self.kelvane(environment=environment, windows=True)
        self.enterContext(self.running)
        alert = self.seen.find("dialog", REFUSAL[0])
        nodes = [(node.role, node.name) for node in alert.descendants()]
        self.assertIn(("label", REFUSAL[1]), nodes)
        buttons = [name for role, name in nodes if role == "push button"]
        self.assertEqual((buttons, self.running.process.poll()), (["Quit"], None))
        self.press("push button", "Quit")
        self.assertEqual((self.running.process.wait(5), self.running.output()), (1, ""))
        self.assertEqual((tray.members(), self.desk.notices.texts()), ([], []))
        self.wait_until_gone("dialog", REFUSAL[0])


if __name__ == "__main__":
    unittest.main()
