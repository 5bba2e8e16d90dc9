"""What assistive programs see of the windows on a desk, asked for on the accessibility bus."""

from gi.repository import GLib

from .bus import Bus
from .processes import wait_until

_ROOT = ("org.a11y.atspi.Registry", "/org/a11y/atspi/accessible/root")
_ACCESSIBLE = "org.a11y.atspi.Accessible"
_ACTION = "org.a11y.atspi.Action"
# Their numbers, by which assistive programs know them.
_ROLES = {7: "check box", 16: "dialog", 23: "frame", 29: "label", 33: "menu", 35: "menu item",
          37: "page tab", 43: "push button", 44: "radio button", 50: "separator", 64: "tool tip",
          99: "grouping"}
_STATES = {"checked": 4, "focused": 12, "selected": 23}


class Node:
    def __init__(self, bus, service, path):
        self._bus, self._service, self._path = bus, service, path

    name = property(lambda self: self._property("Name"))
    description = property(lambda self: self._property("Description"))
    role = property(lambda self: _ROLES.get(self._call(_ACCESSIBLE, "GetRole")))

    def children(self):
        return [Node(self._bus, *each) for each in self._call(_ACCESSIBLE, "GetChildren")]

    def descendants(self):
        for child in self.children():
            yield child
            yield from child.descendants()

    def is_in(self, state):
        low, high = self._call(_ACCESSIBLE, "GetState")
        return bool((low | high << 32) >> _STATES[state] & 1)

    def press(self):
        """Does its only action; whether it could be done."""
        count = self._bus.property(self._service, self._path, _ACTION, "NActions")
        if count != 1:
            raise AssertionError(f"{self.role} “{self.name}” has {count} actions")
        return self._call(_ACTION, "DoAction", GLib.Variant("(i)", (0,)))

    def _call(self, interface, method, arguments=None):
        return self._bus.call(self._service, self._path, interface, method, arguments)[0]

    def _property(self, name):
        return self._bus.property(self._service, self._path, _ACCESSIBLE, name)


class Accessibility:
    """A context, for a desk that was started with accessibility."""

    def __init__(self, desk):
        self._desk = desk

    def __enter__(self):
        address = self._desk.bus.connection.call_sync(
            "org.a11y.Bus", "/org/a11y/bus", "org.a11y.Bus", "GetAddress", None, None, 0, 5000, None
        ).unpack()[0]
        self._bus = Bus(address)
        return self

    def __exit__(self, *_):
        self._bus.close()

    def windows(self):
        """The windows of all programs."""
        applications = Node(self._bus, *_ROOT).children()
        return [window for each in applications for window in each.children()]

    def find(self, role, name, seconds=5.0):
        """The node with that role and name in any window."""
        return wait_until(lambda: self.look(role, name), f"a {role} “{name}”", seconds)

    def look(self, role, name):
        """The same at once, or None."""
        try:
            for window in self.windows():
                for node in (window, *window.descendants()):
                    if node.role == role and node.name == name:
                        return node
        except GLib.Error:  # Something has gone meanwhile.
            pass
        return None
