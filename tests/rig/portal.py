"""A desktop portal that tells its settings: the colour scheme."""

from gi.repository import GLib

from .bus import Bus

_NAME = "org.freedesktop.portal.Desktop"
_PATH = "/org/freedesktop/portal/desktop"
_INTERFACE = "org.freedesktop.portal.Settings"
_XML = f"""<node><interface name="{_INTERFACE}">
<method name="ReadAll"><arg type="as" direction="in"/><arg type="a{{sa{{sv}}}}" direction="out"/>
</method>
<signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
</interface></node>"""
_APPEARANCE = "org.freedesktop.appearance"


class Portal:
    """Owns the portal's name on the bus at `address` for the length of the context."""

    def __init__(self, address, dark=False):
        self._bus = Bus(address)
        self._scheme = self._scheme_of(dark)

    def __enter__(self):
        self._bus.export(_PATH, _XML, self._on_call)
        self._bus.own(_NAME)
        return self

    def __exit__(self, *_):
        self._bus.close()

    def set_dark(self, dark):
        self._scheme = self._scheme_of(dark)
        told = GLib.Variant("(ssv)", (_APPEARANCE, "color-scheme", self._scheme))
        self._bus.connection.emit_signal(None, _PATH, _INTERFACE, "SettingChanged", told)

    @staticmethod
    def _scheme_of(dark):
        return GLib.Variant("u", 1 if dark else 2)

    def _on_call(self, _connection, _sender, _path, _interface, _method, _arguments, invocation):
        settings = {_APPEARANCE: {"color-scheme": self._scheme}}
        invocation.return_value(GLib.Variant("(a{sa{sv}})", (settings,)))
