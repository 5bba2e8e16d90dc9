"""A client of com.canonical.dbusmenu: what a host shows of an item's menu."""

import typing

from gi.repository import GLib

INTERFACE = "com.canonical.dbusmenu"


class Line(typing.NamedTuple):
    id: int
    label: str
    properties: dict
    children: list


class Menu:
    def __init__(self, bus, service, path):
        self.bus, self.service, self.path = bus, service, path

    @classmethod
    def of(cls, item):
        return cls(item.bus, item.service, item.property("Menu"))

    def lines(self):
        """The lines of the menu, submenus below them."""
        arguments = GLib.Variant("(iias)", (0, -1, []))
        _revision, root = self._call("GetLayout", arguments)
        return self._line(root).children

    def labels(self):
        """The visible texts from top to bottom; a separator is "-"."""
        return [
            "-" if line.properties.get("type") == "separator" else line.label
            for line in self.lines()
            if line.properties.get("visible", True)
        ]

    def about_to_show(self, line=0):
        return self._call("AboutToShow", GLib.Variant("(i)", (line,)))[0]

    def event(self, line, kind="clicked", data=GLib.Variant("i", 0)):
        self._call("Event", GLib.Variant("(isvu)", (line, kind, data, 0)))

    def click(self, label):
        """Clicks the line with that text."""
        line = next(line for line in self.lines() if line.label == label)
        self.event(line.id)

    def record(self):
        return self.bus.record(sender=self.bus.owner(self.service), interface=INTERFACE)

    def _call(self, method, arguments):
        return self.bus.call(self.service, self.path, INTERFACE, method, arguments)

    def _line(self, layout):
        number, properties, children = layout
        label = properties.get("label", "")
        return Line(number, label, properties, [self._line(child) for child in children])
