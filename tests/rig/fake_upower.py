"""A stand-in for upowerd that changes as fast as it is told to, for thousands of events."""

from gi.repository import GLib

from .bus import Bus
from .power import DISPLAY_DEVICE, UPOWER

_BATTERY = f"{UPOWER}.Device"
_PROPERTIES = "org.freedesktop.DBus.Properties"
_BATTERY_PATH = "/org/freedesktop/UPower/devices/battery_BAT0"
_ADAPTER_PATH = "/org/freedesktop/UPower/devices/line_power_AC"
_UPS_PATH = "/org/freedesktop/UPower/devices/ups_hiddev0"
_UPS = 3  # UPower's Type
_DAEMON_XML = f"""<node><interface name="{UPOWER}">
<method name="EnumerateDevices"><arg type="ao" direction="out"/></method>
<method name="GetDisplayDevice"><arg type="o" direction="out"/></method>
<property name="DaemonVersion" type="s" access="read"/>
<property name="OnBattery" type="b" access="read"/>
</interface></node>"""


def _variants(**properties):
    kinds = {bool: "b", int: "u", float: "d", str: "s"}
    return {name: GLib.Variant(kinds[type(value)], value) for name, value in properties.items()}


class FakeUPower:
    """One battery, one adapter and the composite of them, on the bus at `address`.

    With a `ups`, its level, the composite is that of the UPS alone, as in upowerd.
    """

    def __init__(self, address, ups=None):
        self._bus = Bus(address)
        battery = dict(
            Type=2, PowerSupply=True, IsPresent=True, Percentage=57.0, State=2, WarningLevel=1,
            Energy=32.5, EnergyFull=57.0, EnergyFullDesign=60.0, EnergyRate=9.5,
        )
        times = {"TimeToEmpty": GLib.Variant("x", 12000), "TimeToFull": GLib.Variant("x", 0)}
        self._objects = {
            "/org/freedesktop/UPower": _variants(DaemonVersion="0.99.20", OnBattery=True),
            DISPLAY_DEVICE: {**_variants(**battery), **times},
            _BATTERY_PATH: {**_variants(NativePath="BAT0", **battery), **times},
            _ADAPTER_PATH: _variants(NativePath="AC", Type=1, PowerSupply=True, Online=False),
        }
        self._changing = [_BATTERY_PATH, DISPLAY_DEVICE]
        if ups is not None:
            self._changing = [_BATTERY_PATH]
            self._objects[_UPS_PATH] = {
                **_variants(NativePath="hiddev0", **{**battery, "Type": _UPS, "Percentage": ups}),
                **times,
            }
            self._objects[DISPLAY_DEVICE] = self._objects[_UPS_PATH]

    def __enter__(self):
        self._export()
        self._bus.own(UPOWER)
        return self

    def __exit__(self, *_):
        self._bus.close()

    def level(self, percentage):
        """A new level, told of the battery and of the composite, as upowerd does."""
        for path in self._changing:
            self._tell(path, _BATTERY, _variants(Percentage=float(percentage)))

    def plug(self, on):
        self._tell(_ADAPTER_PATH, _BATTERY, _variants(Online=on))
        for path in self._changing:
            self._tell(path, _BATTERY, _variants(State=1 if on else 2))
        self._tell("/org/freedesktop/UPower", UPOWER, _variants(OnBattery=not on))

    def _tell(self, path, interface, changed):
        self._objects[path].update(changed)
        arguments = GLib.Variant("(sa{sv}as)", (interface, changed, []))
        self._bus.connection.emit_signal(None, path, _PROPERTIES, "PropertiesChanged", arguments)

    def _export(self):
        for path, properties in self._objects.items():
            if path == "/org/freedesktop/UPower":
                xml = _DAEMON_XML
            else:
                described = "".join(
                    f'<property name="{name}" type="{value.get_type_string()}" access="read"/>'
                    for name, value in properties.items()
                )
                xml = f'<node><interface name="{_BATTERY}">{described}</interface></node>'
            self._bus.export(
                path, xml, self._on_call,
                lambda _connection, _sender, where, _what, name: self._objects[where][name])

    def _on_call(self, _connection, _sender, _path, _interface, method, _arguments, invocation):
        if method == "EnumerateDevices":
            listed = self._objects.keys() - {"/org/freedesktop/UPower", DISPLAY_DEVICE}
            result = GLib.Variant("(ao)", (sorted(listed),))
        else:
            result = GLib.Variant("(o)", (DISPLAY_DEVICE,))
        invocation.return_value(result)
