"""The program under test: the built kelvane, named by $KELVANE."""

import os
import pathlib
import plistlib
import signal
import subprocess
import time

from gi.repository import GLib

from . import item
from .processes import Processes, wait_until

IDENTIFIER = "org.kelvane.Kelvane"
_KEPT = ("PATH", "LANG", "LC_ALL", "ASAN_OPTIONS", "UBSAN_OPTIONS", "TSAN_OPTIONS", "LSAN_OPTIONS")
APPLICATION = (IDENTIFIER, "/org/kelvane/Kelvane", "org.freedesktop.Application")


def program():
    """The path of the built program; a test without it fails."""
    path = os.environ.get("KELVANE")
    if not path or not os.access(path, os.X_OK):
        raise RuntimeError(f"KELVANE does not name the built program: {path!r}")
    return path


def kept_environment():
    """What programs see of the starter's environment; all else is the test's own."""
    return {name: os.environ[name] for name in _KEPT if name in os.environ}


def bare_environment(directory):
    """For commands run away from any desktop: a home of their own and no bus."""
    home = pathlib.Path(directory) / "home"
    runtime = home / "run"
    runtime.mkdir(parents=True, exist_ok=True)
    return {
        **kept_environment(),
        "HOME": str(home),
        "TMPDIR": str(home),
        "XDG_CONFIG_HOME": str(home / ".config"),
        "XDG_RUNTIME_DIR": str(runtime),
        "DBUS_SYSTEM_BUS_ADDRESS": f"unix:path={home}/no-such-bus",
    }


def run(environment, *words, seconds=20, **options):
    """Runs one of kelvane's commands to its end: returncode, stdout and stderr as text."""
    return subprocess.run(
        [program(), *words], env=environment, stdin=subprocess.DEVNULL, capture_output=True,
        text=True, timeout=seconds, **options,
    )


def preferences_file(environment):
    return pathlib.Path(environment["XDG_CONFIG_HOME"]) / "kelvane" / f"{IDENTIFIER}.plist"


def say_launched_before(environment):
    """Where there are no preferences yet: a first launch ends in a welcome."""
    file = preferences_file(environment)
    if not file.exists():
        file.parent.mkdir(parents=True, mode=0o700)
        file.write_bytes(plistlib.dumps({"__hasLaunched__": True}))


class Kelvane:
    """The resident program on a desk, with preferences below `directory`; `bus` is the desk's.

    Fresh preferences say that it was launched before, as its welcome waits for the user.
    """

    def __init__(self, directory, environment, bus, *arguments, wrapper=(), welcome=False):
        self.directory = pathlib.Path(directory)
        self._command = [*wrapper, program(), *arguments]
        self._bus = bus
        self._processes = Processes(self.directory)
        self.environment = {**environment, "XDG_CONFIG_HOME": str(self.directory / "config")}
        if not welcome:
            say_launched_before(self.environment)

    def __enter__(self):
        self.started = time.monotonic()
        self.process = self._processes.start("kelvane", self._command, self.environment)
        return self

    def __exit__(self, *_):
        self._processes.__exit__()

    def item(self, seconds=5.0):
        """The item as soon as the tray has it."""
        found = wait_until(
            lambda: self.process.poll() is not None or item.find(self._bus, IDENTIFIER),
            "kelvane's item",
            seconds,
        )
        if found is True:
            raise RuntimeError(f"kelvane ended with {self.process.returncode}: {self.output()}")
        return found

    def wait_until_gone(self, seconds=5.0):
        """Waits until the tray no longer has the item."""
        item.wait_until_gone(self._bus, IDENTIFIER, seconds)

    def run(self, *words, **options):
        """Runs another kelvane as a command beside this one, on the same preferences."""
        return run(self.environment, *words, **options)

    def set(self, key, value):
        done = self.run("settings", "set", key, value)
        if done.returncode != 0:
            raise RuntimeError(f"settings set {key} {value}: {done.returncode} {done.stderr}")

    def call(self, method, signature, *arguments):
        """Calls a method of the running one's org.freedesktop.Application."""
        return self._bus.call(*APPLICATION, method, GLib.Variant(signature, arguments))

    @property
    def preferences_file(self):
        return preferences_file(self.environment)

    def preferences(self):
        """What the preferences file holds; nothing as long as there is none."""
        file = self.preferences_file
        return plistlib.loads(file.read_bytes()) if file.exists() else {}

    def output(self):
        """What it has written to standard output and standard error."""
        return self._processes.log("kelvane")

    def terminate(self, seconds=5.0):
        """Asks it to end and gives the exit code."""
        self.process.send_signal(signal.SIGTERM)
        return self.process.wait(seconds)
