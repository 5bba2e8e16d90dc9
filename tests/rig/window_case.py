"""The resident program and its windows, as people and assistive programs meet them."""

import os
import pathlib
import signal
import time

from gi.repository import GLib

from .accessible import Accessibility
from .case import DeskCase
from .menu import Menu
from .processes import wait_until

_STARTED = 1.5  # seconds
_HELD = 0.3  # seconds in which a change that is not held back would have been drawn


def unless_gone(ask):
    """What is asked of a node, or None when that is gone meanwhile."""
    try:
        return ask()
    except GLib.Error:
        return None


class SeenWindows:
    """The part of a test case that waits for what is `seen` on its `desk`."""

    def press(self, role, name):
        self.assertTrue(self.seen.find(role, name).press())

    def wait_for_state(self, role, name, state, expected=True):
        wait_until(lambda: unless_gone(lambda: self.seen.find(role, name).is_in(state) == expected),
                   f"the {role} “{name}” with {state} {expected}", 5)

    def wait_until_gone(self, role, name):
        wait_until(lambda: not self.seen.look(role, name), f"the end of the {role} “{name}”", 5)

    def wait_until_active(self, title):
        """Until the window with that title is in front and has the keys."""
        active = lambda: self.desk.x("xdotool", "getactivewindow", "getwindowname").strip()
        wait_until(lambda: active() == title, f"“{title}” in front", 5)


class WindowCase(SeenWindows, DeskCase):
    accessibility = True

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.seen = cls.enterClassContext(Accessibility(cls.desk))

    def start(self, **options):
        """A kelvane for this test that may show windows; gives its item."""
        self.running = self.start_kelvane(windows=True, **options)
        return self.running.item()

    def start_and_settle(self, **options):
        """The same, after it has drawn once more for the colours of the panel."""
        item = self.start(**options)
        time.sleep(_STARTED)
        return item

    def choose(self, *labels):
        """Clicks a line of the item's menu, or of a submenu."""
        menu = Menu.of(self.running.item())
        lines = menu.lines()
        for label in labels:
            line = next(line for line in lines if line.label == label)
            lines = line.children
        menu.event(line.id)

    def wait_until_closed(self, node, seconds=5):
        """Until that node of a window is no more; sooner than by looking for it everywhere."""
        is_there = lambda: unless_gone(lambda: [node.name])
        wait_until(lambda: not is_there(), "a window's end", seconds, interval=0.005)

    def wait_for_texts(self, *expected):
        """Until the notices shown are these."""
        shown = self.desk.notices.shown_texts
        wait_until(lambda: shown() == list(expected), lambda: f"{expected}: {shown()}", 5)

    def holds_back(self, window, capacity, close, closed=lambda told: None):
        """A change of the battery is drawn once, when `close()` has ended that window.

        `closed` is then called with what UPower has told since.
        """
        told, drawn = self.power.record(path=None), self.item.record()
        self.power.set(f"capacity={capacity}")
        told.wait_for("PropertiesChanged")
        time.sleep(_HELD)
        self.assertEqual(drawn.members(), [])
        told.clear()
        close()
        self.wait_until_closed(window)
        closed(told)
        drawn.wait_for("NewIcon")
        Menu.of(self.item).labels()  # What it told before it answers has come.
        self.assertEqual(drawn.members().count("NewIcon"), 1)

    def window_programs(self):
        """The process ids of the running one's children."""
        tasks = pathlib.Path(f"/proc/{self.running.process.pid}/task")
        return [int(pid) for file in tasks.glob("*/children") for pid in file.read_text().split()]

    def kill_windows(self):
        """Ends the window program as a crash does."""
        program, = self.window_programs()
        os.kill(program, signal.SIGKILL)

    def wait_for_no_windows(self):
        wait_until(lambda: not self.window_programs(), "the window program's end", 5)
