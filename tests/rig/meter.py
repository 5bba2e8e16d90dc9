"""What a running program costs: memory, threads, wake-ups, processor time, time to the tray."""

import ctypes
import pathlib
import select
import threading
import time
import typing

from gi.repository import Gio, GLib

from .bus import Bus


class Memory(typing.NamedTuple):
    """In kB. PSS depends on what else on the desk maps the same libraries; RSS and dirty do not."""

    rss: int
    pss: int
    dirty: int  # private dirty


class Activity(typing.NamedTuple):
    switches: int  # context switches, voluntary or not
    milliseconds: float  # processor time


def memory(pid):
    lines = pathlib.Path(f"/proc/{pid}/smaps_rollup").read_text().splitlines()[1:]
    values = {line.split(":")[0]: int(line.split()[1]) for line in lines}
    return Memory(values["Rss"], values["Pss"], values["Private_Dirty"])


def activity(pid):
    """What each living thread of a program has done since it began, by thread id."""
    threads = {}
    for task in pathlib.Path(f"/proc/{pid}/task").iterdir():
        lines = (task / "status").read_text().splitlines()
        switches = sum(int(line.split()[1]) for line in lines if "ctxt_switches" in line)
        nanoseconds = int((task / "schedstat").read_text().split()[0])
        threads[task.name] = Activity(switches, nanoseconds / 1e6)
    return threads


def spent(before, after):
    """What a program did between two answers of `activity`.

    What a thread did that ended in between is unknown, but for the one switch of its end.
    """
    ended = len(before.keys() - after.keys())
    still = Activity(0, 0)
    changes = [(done, before.get(thread, still)) for thread, done in after.items()]
    return Activity(
        sum(done.switches - had.switches for done, had in changes) + ended,
        sum(done.milliseconds - had.milliseconds for done, had in changes),
    )


def threads(pid):
    return len(list(pathlib.Path(f"/proc/{pid}/task").iterdir()))


class Moments:
    """Stamps something each time that it happens, in a thread of its own."""

    def __init__(self):
        self.times = []

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def wait_for_next(self, known, seconds, *others):
        """The first moment after the first `known` ones, or None.

        With `others`, pairs of Moments and what is known of them, the first of any of them.
        """
        deadline = time.monotonic() + seconds
        watched = [(self, known), *others]
        while True:
            came = [each.times[count] for each, count in watched if len(each.times) > count]
            if came or time.monotonic() >= deadline:
                return min(came, default=None)
            time.sleep(0.001)


class Registrations(Moments):
    """Stamps every RegisterStatusNotifierItem call on a bus, as a monitor of it."""

    def __init__(self, address):
        super().__init__()
        self._bus = Bus(address)
        connection = self._bus.connection
        connection.add_filter(self._filter)
        connection.call_sync(
            "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.Monitoring",
            "BecomeMonitor", GLib.Variant("(asu)", (["member='RegisterStatusNotifierItem'"], 0)),
            None, Gio.DBusCallFlags.NONE, -1, None,
        )

    def close(self):
        self._bus.close()

    def _filter(self, _connection, message, incoming):
        # Runs on GDBus's own thread, so the stamp does not wait for any main loop.
        if message.get_member() != "RegisterStatusNotifierItem":
            return message
        if incoming:
            self.times.append(time.monotonic())
        return None  # A monitor that answers a call is thrown off the bus.


class Embeddings(Moments):
    """Stamps every window that leaves the root window of an X display for another one, as one does
    that a tray takes in. A window manager with frames does it to the windows that it manages."""

    _SUBSTRUCTURE_NOTIFY = 1 << 19
    _REPARENT_NOTIFY = 21
    _EVENT_BYTES = 192

    def __init__(self, display):
        super().__init__()
        x = self._x = ctypes.CDLL("libX11.so.6")
        x.XOpenDisplay.restype = ctypes.c_void_p
        x.XDefaultRootWindow.restype = ctypes.c_ulong
        self._display = ctypes.c_void_p(x.XOpenDisplay(display.encode()))
        root = ctypes.c_ulong(x.XDefaultRootWindow(self._display))
        x.XSelectInput(self._display, root, ctypes.c_long(self._SUBSTRUCTURE_NOTIFY))
        x.XSync(self._display, 0)
        self._is_over = False
        self._thread = threading.Thread(target=self._listen, daemon=True)
        self._thread.start()

    def close(self):
        self._is_over = True
        self._thread.join()
        self._x.XCloseDisplay(self._display)

    def _listen(self):
        event = ctypes.create_string_buffer(self._EVENT_BYTES)
        connection = self._x.XConnectionNumber(self._display)
        while not self._is_over:
            select.select([connection], [], [], 0.1)
            now = time.monotonic()
            while self._x.XPending(self._display):
                self._x.XNextEvent(self._display, event)
                if ctypes.c_int.from_buffer(event).value == self._REPARENT_NOTIFY:
                    self.times.append(now)
