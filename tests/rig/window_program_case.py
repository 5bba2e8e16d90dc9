"""The window program by itself, with a test in place of the resident program."""

import tempfile
import unittest

from .accessible import Accessibility
from .desk import Desk
from .window_case import SeenWindows
from .window_peer import WindowPeer


class WindowProgramCase(SeenWindows, unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="kelvane-", ignore_cleanup_errors=True)
        directory = cls.enterClassContext(folder)
        cls.desk = cls.enterClassContext(Desk(directory, "none", "none", accessibility=True))
        cls.seen = cls.enterClassContext(Accessibility(cls.desk))

    def start(self, says=(), **options):
        """A window program for this test; at its end it must end well and have said `says`."""
        peer = WindowPeer(self.enterContext(tempfile.TemporaryDirectory()),
                          options.pop("environment", self.desk.environment), **options)
        self.enterContext(peer)
        self.peer = peer
        self.addCleanup(self._ends_well, peer, list(says))
        return peer

    def assert_quiet(self):
        """All that was asked for until now is done, and has made the program tell nothing."""
        self.peer.send("popover", popover=99, text="")
        self.peer.wait_for("popoverRefused")
        self.assertEqual([each for each in self.peer.events if "protocol" not in each], [])

    def _ends_well(self, peer, says):
        if peer.process.poll() is None:
            peer.hang_up()
            code, said = peer.wait_for_end()
            self.assertEqual((code, said.splitlines()), (0, says))
