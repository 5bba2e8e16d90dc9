"""What the integration tests share: a desk for each class, a fresh kelvane for each test."""

import contextlib
import os
import pathlib
import tempfile
import unittest

from .desk import Desk
from .kelvane import Kelvane, bare_environment, run
from .menu import Menu
from .power import Power
from .processes import wait_until

# Where tests leave pictures for people to look at.
ARTIFACTS = pathlib.Path(os.environ.get("KELVANE_ARTIFACTS", tempfile.gettempdir()))


class CommandCase(unittest.TestCase):
    """Commands away from any desktop, each test in a directory of its own."""

    def setUp(self):
        self._stack = contextlib.ExitStack()
        self.addCleanup(self._stack.close)
        self.directory = pathlib.Path(self.enter(tempfile.TemporaryDirectory(prefix="kelvane-")))
        self.environment = bare_environment(self.directory)

    def enter(self, context):
        return self._stack.enter_context(context)

    def run_kelvane(self, *words, code=0, **options):
        """Runs a command that must end with `code`; its complaint, if any, must be one line."""
        done = run(self.environment, *words, **options)
        said = f"kelvane {' '.join(words)}: {done.stdout}{done.stderr}"
        self.assertEqual(done.returncode, code, said)
        if code:
            self.assertEqual(len(done.stderr.splitlines()), 1, said)
        return done


class DeskCase(unittest.TestCase):
    """A desk and a power of its own, shared by the tests of one class."""

    host = "xfce"
    notifier = "dunst"
    accessibility = False

    @classmethod
    def setUpClass(cls):
        folder = tempfile.TemporaryDirectory(prefix="kelvane-", ignore_cleanup_errors=True)
        directory = cls.enterClassContext(folder)
        cls.power = cls.enterClassContext(Power(directory))
        desk = Desk(directory, cls.host, cls.notifier, cls.power, accessibility=cls.accessibility)
        cls.desk = cls.enterClassContext(desk)

    def setUp(self):
        self.power.reset()
        self.desk.notices.clear()

    def start_kelvane(self, *arguments, says=(), **options):
        """Starts kelvane for this test; until its end it must have said the lines `says`, no more.

        The options are those of `kelvane`.
        """
        kelvane = self.kelvane(*arguments, **options)
        kelvane.__enter__()
        self.addCleanup(kelvane.__exit__)
        self.addCleanup(self._ends_well, kelvane, list(says))
        return kelvane

    def kelvane(self, *arguments, environment=None, variables=(), directory=None, windows=False,
                **options):
        """A kelvane that is not started yet, and of which commands can be run.

        It is told of the fake tree and of more `variables`, unless an environment is given: the
        mock one shows it as /sys, with the kernel's events. Its preferences are below `directory`,
        by default one of its own. Without `windows` it knows of no display, and what windows would
        say comes as notices.
        """
        if environment is None:
            tree = {"KELVANE_POWER_SUPPLY": self.power.power_supply}
            environment = {**self.desk.environment, **tree, **dict(variables)}
        if not windows:
            displays = ("DISPLAY", "WAYLAND_DISPLAY")
            environment = {key: environment[key] for key in environment if key not in displays}
        directory = directory or self.temporary_directory()
        return Kelvane(directory, environment, self.desk.bus, *arguments, **options)

    def temporary_directory(self):
        """A directory for the length of this test."""
        folder = tempfile.TemporaryDirectory(prefix="kelvane-")
        self.addCleanup(folder.cleanup)
        return pathlib.Path(folder.name)

    def changes_picture(self, item, change, what):
        """Makes `change()` and gives the picture, another one, that a NewIcon then told of."""
        return self.draws(item, change, what)[1]

    def draws(self, item, change, what):
        """Makes `change()`; gives the first NewIcon that finds another picture, and the picture.

        On a busy machine a picture may come and go again before the lasting one: the kernel's word
        comes before UPower's.
        """
        before = item.picture()
        said = item.record()
        change()
        seen = []

        def drawn():
            news = said.signals(lambda signal: signal.member == "NewIcon")
            if len(news) == len(seen):
                return None
            seen[:] = news
            after = item.picture()
            return (news[-1], after) if after != before else None

        return wait_until(drawn, lambda: f"another picture after {what}; seen: {said.members()}", 5)

    def waits_for_estimate(self, item, is_there=True):
        """Of the time that is left, which is UPower's alone to tell; the item may come before it."""
        labels = Menu.of(item).labels
        is_estimate = lambda label: label[:1].isdigit() and label.endswith("Remaining")
        wait_until(lambda: any(map(is_estimate, labels())) == is_there,
                   lambda: f"{'an' if is_there else 'no'} estimate in {labels()}")

    def _ends_well(self, kelvane, says):
        if kelvane.process.poll() is None:
            self.assertEqual(kelvane.terminate(), 0, kelvane.output())
        else:
            self.assertEqual(kelvane.process.returncode, 0, kelvane.output())
        self.assertEqual(kelvane.output().splitlines(), says)
