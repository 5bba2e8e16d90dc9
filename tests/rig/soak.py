"""The desk of the soak tests: a tray, and a battery that changes thousands of times."""

import contextlib
import os
import pathlib
import tempfile
import unittest

from .desk import Desk
from .events import EventSource
from .kelvane import Kelvane

EVENTS = int(os.environ.get("KELVANE_EVENTS", "10000"))


class SoakCase(unittest.TestCase):
    def setUp(self):
        stack = contextlib.ExitStack()
        self.addCleanup(stack.close)
        folder = tempfile.TemporaryDirectory(prefix="kelvane-", ignore_cleanup_errors=True)
        self.directory = pathlib.Path(stack.enter_context(folder))
        self.source = stack.enter_context(EventSource(self.directory))
        self.desk = stack.enter_context(
            Desk(self.directory, "xfce", notifier="none", power=self.source.power)
        )

    def start_kelvane(self, wrapper=(), **variables):
        environment = {
            **self.desk.environment,
            **variables,
            "KELVANE_POWER_SUPPLY": str(self.source.tree.path),
        }
        kelvane = Kelvane(self.directory / "run", environment, self.desk.bus, wrapper=wrapper)
        self.addCleanup(kelvane.__exit__)
        return kelvane.__enter__()
