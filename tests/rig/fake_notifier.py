"""A notification daemon that answers as a test tells it to, well or badly."""

import itertools

from gi.repository import Gio, GLib

from .bus import Bus
from .notifiers import NAME

_PATH = "/org/freedesktop/Notifications"
_XML = f"""<node><interface name="{NAME}">
<method name="Notify">
<arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
<arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
<arg type="a{{sv}}" direction="in"/><arg type="i" direction="in"/>
{{answer}}</method>
<method name="CloseNotification"><arg type="u" direction="in"/></method>
<method name="GetCapabilities"><arg type="as" direction="out"/></method>
<method name="GetServerInformation"><arg type="s" direction="out"/><arg type="s" direction="out"/>
<arg type="s" direction="out"/><arg type="s" direction="out"/></method>
</interface></node>"""
_ERROR = f"{NAME}.Error"


class FakeNotifier:
    """Owns the daemon's name on the bus at `address` for the length of the context.

    `answer` is what Notify gives: a Variant, "error", "nothing" for no answer at all; by default an
    id not used before. `signals` are told after each notice: (member, Variant) pairs.
    """

    def __init__(self, address, answer=None, signals=()):
        self._bus = Bus(address)
        self._answer, self._signals = answer, signals
        self._ids = itertools.count(1)

    def __enter__(self):
        is_variant = isinstance(self._answer, GLib.Variant)
        kind = self._answer.get_type_string()[1:-1] if is_variant else "u"
        result = f'<arg type="{kind}" direction="out"/>' if kind else ""
        node = Gio.DBusNodeInfo.new_for_xml(_XML.replace("{answer}", result))
        self._bus.in_thread(
            lambda: self._bus.connection.register_object(
                _PATH, node.interfaces[0], self._on_call, None, None
            )
        )
        self._bus.own(NAME)
        return self

    def __exit__(self, *_):
        self._bus.close()

    def _on_call(self, _connection, _sender, _path, _interface, method, arguments, invocation):
        if method == "GetCapabilities":
            invocation.return_value(GLib.Variant("(as)", (["body"],)))
        elif method == "GetServerInformation":
            invocation.return_value(GLib.Variant("(ssss)", ("fake", "rig", "1", "1.2")))
        elif self._answer == "error":
            invocation.return_dbus_error(_ERROR, "this daemon does nothing")
        elif method == "CloseNotification":
            invocation.return_value(None)
            closed = GLib.Variant("(uu)", (*arguments.unpack(), 3))
            self._tell("NotificationClosed", closed)
        elif self._answer != "nothing":
            replaced = arguments.unpack()[1]
            number = GLib.Variant("(u)", (replaced or next(self._ids),))
            invocation.return_value(number if self._answer is None else self._answer)
            for member, told in self._signals:
                self._tell(member, told)

    def _tell(self, member, arguments):
        self._bus.connection.emit_signal(None, _PATH, NAME, member, arguments)
