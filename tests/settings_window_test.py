"""The settings window of the running program: every control, its key, and what follows it."""

import contextlib
import os
import plistlib
import subprocess
import tempfile
import unittest

from rig.desk import Desk
from rig.meter import memory
from rig.processes import wait_until
from rig.window_case import WindowCase

TITLE = "Kelvane Settings"
HIDDEN = "Kelvane will be hidden while the power adapter is connected."
NO_WINDOWS = "No window can be shown here; “kelvane settings list” shows every setting."
TOGGLE, RADIO = "check box", "radio button"


class SettingsCase(WindowCase):
    def open(self, **options):
        item = self.start(**options)
        self.choose("Preferences…")
        self.window = self.seen.find("frame", TITLE)
        return item

    def dump(self):
        for w in self.seen.windows():
            print("WINDOW", w.role, w.name)
            for n in w.descendants():
                if n.role not in (None,) : print("   ", n.role, repr(n.name), n.is_in("checked"))


class ControlsTest(SettingsCase):
    def test_x(self):
        import time
        t=time.time()
        self.open()
        print("open", time.time()-t)
        t=time.time()
        self.dump()
        print("dump", time.time()-t)
        self.press("page tab", "Menu Bar")
        self.dump()
        t=time.time()
        self.press("page tab", "General")
        self.press("push button", "Notify at percentages…")
        self.seen.find("push button", "Done")
        print("sheet", time.time()-t)
        self.dump()


if __name__ == "__main__":
    unittest.main()
