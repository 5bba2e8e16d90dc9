"""What a running program costs: memory, threads, wake-ups, processor time, time to register."""

import pathlib
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


class Registrations:
    """Stamps every RegisterStatusNotifierItem call on a bus, as a monitor of it."""

    def __init__(self, address):
        self._bus = Bus(address)
        self._times = []
        connection = self._bus.connection
        connection.add_filter(self._filter)
        connection.call_sync(
            "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.Monitoring",
            "BecomeMonitor", GLib.Variant("(asu)", (["member='RegisterStatusNotifierItem'"], 0)),
            None, Gio.DBusCallFlags.NONE, -1, None,
        )

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._bus.close()

    def count(self):
        return len(self._times)

    def wait_for_next(self, known, seconds):
        """The moment of the first call after the first `known` ones, or None."""
        deadline = time.monotonic() + seconds
        while len(self._times) <= known and time.monotonic() < deadline:
            time.sleep(0.001)
        return self._times[known] if len(self._times) > known else None

    def _filter(self, _connection, message, incoming):
        # Runs on GDBus's own thread, so the stamp does not wait for any main loop.
        if message.get_member() != "RegisterStatusNotifierItem":
            return message
        if incoming:
            self._times.append(time.monotonic())
        return None  # A monitor that answers a call is thrown off the bus.
