"""Child processes that end with the process that started them, whatever happens to it."""

import ctypes
import os
import pathlib
import signal
import subprocess
import time

_libc = ctypes.CDLL(None, use_errno=True)
_PR_SET_PDEATHSIG = 1


def wait_until(condition, what, seconds=15.0, interval=0.01):
    """Waits until `condition()` gives something true and returns that; otherwise TimeoutError.

    `what` is awaited, in words; as a function it is asked for them at the time of the error.
    """
    deadline = time.monotonic() + seconds
    while True:
        result = condition()
        if result:
            return result
        if time.monotonic() >= deadline:
            words = what() if callable(what) else what
            raise TimeoutError(f"after {seconds:g} s still waiting for {words}")
        time.sleep(interval)


def die_with_parent():
    """In a child before exec: the kernel kills it when its parent dies, even of SIGKILL."""
    _libc.prctl(_PR_SET_PDEATHSIG, signal.SIGKILL)


class Processes:
    """Named children with one log file each. Leaving the context ends them, the latest first."""

    def __init__(self, log_directory):
        self._logs = pathlib.Path(log_directory)
        self._logs.mkdir(parents=True, exist_ok=True)
        self._running = {}

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for name in reversed(list(self._running)):
            self.stop(name)

    def start(self, name, command, environment, **options):
        """Starts `command` in a session of its own; its output goes to the log of that name."""
        if name in self._running:
            raise RuntimeError(f"{name} is running already")
        with open(self._log_file(name), "ab") as log:
            child = subprocess.Popen(
                [str(word) for word in command],
                env=environment,
                stdin=options.pop("stdin", subprocess.DEVNULL),
                stdout=options.pop("stdout", log),
                stderr=log,
                start_new_session=True,
                preexec_fn=die_with_parent,
                **options,
            )
        self._running[name] = child
        return child

    def stop(self, name, first=signal.SIGTERM, seconds=3.0):
        """Ends the child and its descendants of the same group: politely, then with SIGKILL."""
        child = self._running.pop(name, None)
        if child is None:
            return
        self._signal(child, first)
        try:
            child.wait(seconds)
        except subprocess.TimeoutExpired:
            pass
        self._signal(child, signal.SIGKILL)
        child.wait()
        for pipe in (child.stdin, child.stdout):
            if pipe:
                pipe.close()

    def kill(self, name):
        """Ends the child without giving it a chance to say goodbye."""
        self.stop(name, first=signal.SIGKILL)

    def is_running(self, name):
        child = self._running.get(name)
        return child is not None and child.poll() is None

    def log(self, name):
        """What the child has written so far."""
        file = self._log_file(name)
        return file.read_text(errors="replace") if file.exists() else ""

    def _log_file(self, name):
        return self._logs / f"{name}.log"

    @staticmethod
    def _signal(child, number):
        try:
            os.killpg(child.pid, number)
        except (ProcessLookupError, PermissionError):
            child.send_signal(number)
