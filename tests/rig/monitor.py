"""What is said on a bus in one interface: calls, and answers to them, as well as signals."""

import time
import typing

from gi.repository import GLib

from .bus import Bus, Recording

_MONITORING = "org.freedesktop.DBus.Monitoring"
_KINDS = ("invalid", "call", "return", "error", "signal")


class Message(typing.NamedTuple):
    time: float  # of time.monotonic(), on arrival
    kind: str  # call, return, error or signal
    sender: str
    destination: str
    serial: int  # the sender's number of it
    answers: int  # for a return or an error: the serial of the call
    path: str
    member: str
    arguments: tuple


class Monitor:
    """Hears the calls and signals of `interface` on the bus at `address`, and what the owner of the
    name `service`, if one is given, answers to anybody.
    """

    def __init__(self, address, interface, service=None):
        self._bus = Bus(address)
        self.messages = Recording()
        self._listening = False
        self._bus.connection.add_filter(self._on_message)
        rules = [f"interface='{interface}'"]
        if service:
            rules += [f"type='{kind}',sender='{service}'" for kind in ("method_return", "error")]
        self._bus.call("org.freedesktop.DBus", "/org/freedesktop/DBus", _MONITORING,
                       "BecomeMonitor", GLib.Variant("(asu)", (rules, 0)))

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        self._bus.close()

    def calls(self, *members):
        """The calls of those methods, or of all, in the order of their arrival."""
        return self.messages.signals(
            lambda message: message.kind == "call" and (not members or message.member in members)
        )

    def _on_message(self, _connection, message, incoming, *_):
        # In the connection's own thread. A monitor must not answer, so nothing is handed on, except
        # the answer that makes it a monitor.
        if not incoming:
            return message
        kind = _KINDS[int(message.get_message_type())]
        if not self._listening:
            self._listening = kind in ("return", "error")
            return message
        body = message.get_body()
        self.messages.add(
            Message(
                time.monotonic(), kind, message.get_sender(), message.get_destination(),
                message.get_serial(), message.get_reply_serial(), message.get_path(),
                message.get_member(), body.unpack() if body else (),
            )
        )
        return None
