"""The resident's end of the window program: starts it, says what to show, hears the user."""

import json
import pathlib
import select
import socket
import time

from .kelvane import program
from .processes import Processes, wait_until

GREETING = {"protocol": 1, "dark": None, "reducedMotion": True}


class WindowPeer:
    """A context; `environment` names the display, `directory` is for the program's log."""

    def __init__(self, directory, environment, greeting=GREETING):
        self._processes = Processes(pathlib.Path(directory))
        self._environment = environment
        self._greeting = greeting
        self._rest = b""
        self.events = []

    def __enter__(self):
        self._socket, theirs = socket.socketpair()
        with theirs:
            words = f'exec 3<&{theirs.fileno()} {theirs.fileno()}<&- && exec "$0"'
            self.started = time.monotonic()
            self.process = self._processes.start(
                "windows", ["bash", "-c", words, self.program()], self._environment,
                pass_fds=(theirs.fileno(),),
            )
        if self._greeting:
            self.send_line(json.dumps(self._greeting))
        return self

    def __exit__(self, *_):
        self._socket.close()
        self._processes.__exit__()

    @staticmethod
    def program():
        return pathlib.Path(program()).with_name("kelvane-windows")

    def send(self, kind, **fields):
        self.send_line(json.dumps({"kind": kind, **fields}))

    def send_line(self, line):
        self._socket.sendall(line.encode() + b"\n")

    def wait_for(self, kind, seconds=5.0):
        """The next event of that kind, which is taken from `events`; others stay there."""
        return wait_until(lambda: self._take(kind), lambda: f"{kind}: {self.events}", seconds)

    def read(self):
        """Reads what has come until now."""
        while select.select([self._socket], [], [], 0)[0]:
            came = self._socket.recv(65536)
            if not came:
                return
            *lines, self._rest = (self._rest + came).split(b"\n")
            self.events += [json.loads(line) for line in lines]

    def hang_up(self):
        self._socket.shutdown(socket.SHUT_RDWR)

    def wait_for_end(self, seconds=5.0):
        """Its exit code and what it has said."""
        code = self.process.wait(seconds)
        return code, self._processes.log("windows")

    def _take(self, kind):
        self.read()
        for event in self.events:
            if event.get("kind") == kind:
                self.events.remove(event)
                return event
        return None
