"""A client of a message bus that calls, and records signals with the moment of their arrival."""

import threading
import time
import typing

from gi.repository import Gio, GLib

_BUS = ("org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus")
_PROPERTIES = "org.freedesktop.DBus.Properties"


class Signal(typing.NamedTuple):
    time: float  # of time.monotonic(), on arrival
    sender: str
    path: str
    interface: str
    member: str
    arguments: tuple


class Recording:
    """Signals seen since the recording began. Any thread may ask."""

    def __init__(self):
        self._signals = []
        self._news = threading.Condition()

    def add(self, signal):
        with self._news:
            self._signals.append(signal)
            self._news.notify_all()

    def signals(self, matches=lambda signal: True):
        with self._news:
            return [signal for signal in self._signals if matches(signal)]

    def members(self):
        """The names of the signals in the order of their arrival."""
        return [signal.member for signal in self.signals()]

    def clear(self):
        with self._news:
            self._signals.clear()

    def wait_for(self, matches=lambda signal: True, seconds=5.0, what="a signal"):
        """The first recorded signal that matches; TimeoutError when none comes in time."""
        if isinstance(matches, str):
            member = what = matches
            matches = lambda signal: signal.member == member
        deadline = time.monotonic() + seconds
        with self._news:
            while True:
                for signal in self._signals:
                    if matches(signal):
                        return signal
                left = deadline - time.monotonic()
                if left <= 0:
                    seen = [signal.member for signal in self._signals]
                    raise TimeoutError(f"no {what} within {seconds:g} s; seen: {seen}")
                self._news.wait(left)


class Bus:
    """One connection to the bus at `address`, closed at the end of the context."""

    def __init__(self, address):
        self.connection = Gio.DBusConnection.new_for_address_sync(
            address,
            Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT
            | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION,
            None,
            None,
        )
        self.connection.set_exit_on_close(False)
        self._context = GLib.MainContext.new()
        self._loop = GLib.MainLoop.new(self._context, False)
        self._thread = threading.Thread(target=self._run, daemon=True)
        self._thread.start()

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        if not self.connection.is_closed():
            self.connection.close_sync(None)
        self._loop.quit()
        self._thread.join()

    def call(self, destination, path, interface, method, arguments=None, seconds=5.0,
             may_start=False):
        """Calls a method; gives the tuple of results. GLib.Error when it fails."""
        flags = Gio.DBusCallFlags.NONE if may_start else Gio.DBusCallFlags.NO_AUTO_START
        reply = self.connection.call_sync(
            destination, path, interface, method, arguments, None, flags, int(seconds * 1000), None,
        )
        return reply.unpack()

    def properties(self, destination, path, interface):
        arguments = GLib.Variant("(s)", (interface,))
        return self.call(destination, path, _PROPERTIES, "GetAll", arguments)[0]

    def property(self, destination, path, interface, name):
        arguments = GLib.Variant("(ss)", (interface, name))
        return self.call(destination, path, _PROPERTIES, "Get", arguments)[0]

    def has_owner(self, name):
        return self.call(*_BUS, "NameHasOwner", GLib.Variant("(s)", (name,)))[0]

    def owner(self, name):
        return self.call(*_BUS, "GetNameOwner", GLib.Variant("(s)", (name,)))[0]

    def own(self, name):
        """Takes a name for the life of this connection."""
        return self.call(*_BUS, "RequestName", GLib.Variant("(su)", (name, 0)))[0]

    def export(self, path, xml, on_call, on_get=None):
        """Offers the interface that `xml` describes; calls come on the thread of the callbacks."""
        interface = Gio.DBusNodeInfo.new_for_xml(xml).interfaces[0]
        self.in_thread(lambda: self.connection.register_object(
            path, interface, on_call, on_get, None))

    def process_of(self, name):
        """The process id behind a bus name, or None when the name has gone."""
        try:
            return self.call(*_BUS, "GetConnectionUnixProcessID", GLib.Variant("(s)", (name,)))[0]
        except GLib.Error:
            return None

    def names(self):
        return self.call(*_BUS, "ListNames")[0]

    def record(self, sender=None, path=None, interface=None, member=None):
        """Records signals from now on; a `sender` may be a unique or a well-known name."""
        recording = Recording()

        def on_signal(_connection, source, where, what, name, arguments):
            now = time.monotonic()
            recording.add(Signal(now, source, where, what, name, arguments.unpack()))

        self.in_thread(
            lambda: self.connection.signal_subscribe(
                sender, interface, member, path, None, Gio.DBusSignalFlags.NONE, on_signal
            )
        )
        self.call(*_BUS, "GetId")  # Answered after the match rule is in force.
        return recording

    def in_thread(self, function):
        """Runs `function` on the thread whose main context dispatches our callbacks."""
        done = threading.Event()
        result = []

        def run(*_):
            result.append(function())
            done.set()
            return GLib.SOURCE_REMOVE

        source = GLib.idle_source_new()
        source.set_priority(GLib.PRIORITY_HIGH)
        source.set_callback(run)
        source.attach(self._context)
        if not done.wait(5):
            raise TimeoutError("the bus thread does not answer")
        return result[0]

    def _run(self):
        self._context.push_thread_default()
        self._loop.run()
        self._context.pop_thread_default()
