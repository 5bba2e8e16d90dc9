"""A watcher that collects tray items, whether or not something shows them."""

from gi.repository import Gio, GLib

from .bus import Bus
from .hosts.host import WATCHER

_PATH = "/StatusNotifierWatcher"
_XML = f"""<node><interface name="{WATCHER}">
<method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
<property name="RegisteredStatusNotifierItems" type="as" access="read"/>
<property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
</interface></node>"""


class FakeWatcher:
    """Owns the watcher's name on the bus at `address` for the length of the context."""

    def __init__(self, address):
        self._bus = Bus(address)
        self._items = []
        self.has_host = False

    def __enter__(self):
        node = Gio.DBusNodeInfo.new_for_xml(_XML)
        self._bus.in_thread(
            lambda: self._bus.connection.register_object(
                _PATH, node.interfaces[0], self._on_call, self._on_get, None
            )
        )
        self._bus.own(WATCHER)
        return self

    def __exit__(self, *_):
        self._bus.close()

    def _on_call(self, _connection, sender, _path, _interface, _method, _arguments, invocation):
        self._items.append(sender)
        invocation.return_value(None)

    def _on_get(self, _connection, _sender, _path, _interface, name):
        if name == "IsStatusNotifierHostRegistered":
            return GLib.Variant("b", self.has_host)
        return GLib.Variant("as", self._items)
