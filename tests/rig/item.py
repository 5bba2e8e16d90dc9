"""A StatusNotifierItem, read as a tray host reads it."""

import typing
import zlib

import cairo
from gi.repository import GLib

from .hosts.host import WATCHER
from .processes import wait_until

INTERFACE = "org.kde.StatusNotifierItem"


class Picture(typing.NamedTuple):
    """One entry of IconPixmap: rows of pixels, four bytes each: alpha, red, green, blue."""

    width: int
    height: int
    pixels: bytes  # big-endian ARGB, alpha not multiplied in

    def __repr__(self):
        return f"<{self.width}x{self.height} pixels {zlib.crc32(self.pixels):08x}>"

    def alpha(self):
        return self.pixels[0::4]

    def colors(self):
        """The (red, green, blue) of the pixels that can be seen well."""
        return {tuple(self.pixels[i + 1 : i + 4]) for i in range(0, len(self.pixels), 4)
                if self.pixels[i] > 200}

    def is_light(self):
        """Whether the glyph is light, on a backing or not."""
        return max(map(sum, self.colors())) > 600

    def save(self, path):
        """Writes a PNG with the transparency kept."""
        surface = cairo.ImageSurface(cairo.FORMAT_ARGB32, self.width, self.height)
        data, stride = surface.get_data(), surface.get_stride()
        for y in range(self.height):
            for x in range(self.width):
                at = 4 * (y * self.width + x)
                alpha, *color = self.pixels[at : at + 4]
                # Cairo wants the color multiplied by alpha, and the bytes the other way round.
                pixel = [alpha, *(part * alpha // 255 for part in color)]
                data[y * stride + 4 * x : y * stride + 4 * x + 4] = bytes(reversed(pixel))
        surface.mark_dirty()
        surface.write_to_png(str(path))


class Item:
    """The item at (`service`, `path`); `bus` is a Bus on the desk's session bus."""

    def __init__(self, bus, service, path):
        self.bus, self.service, self.path = bus, service, path

    @property
    def owner(self):
        return self.bus.owner(self.service)

    def property(self, name):
        return self.bus.property(self.service, self.path, INTERFACE, name)

    def properties(self):
        return self.bus.properties(self.service, self.path, INTERFACE)

    def pictures(self):
        """The item's pictures; ValueError when one's bytes do not fit its size."""
        pictures = []
        for width, height, pixels in self.property("IconPixmap"):
            if len(pixels) != 4 * width * height or width <= 0 or height <= 0:
                raise ValueError(f"{width}x{height} pixels in {len(pixels)} bytes")
            pictures.append(Picture(width, height, bytes(pixels)))
        return pictures

    def picture(self):
        """The item's only or first picture."""
        return self.pictures()[0]

    def tooltip(self):
        """The tooltip's title and body, or None when the item has none."""
        properties = self.properties()
        return tuple(properties["ToolTip"][2:]) if "ToolTip" in properties else None

    def record(self):
        """Records every signal the item's process sends from now on."""
        return self.bus.record(sender=self.owner)

    def call(self, method, *coordinates):
        arguments = GLib.Variant("(ii)", coordinates)
        return self.bus.call(self.service, self.path, INTERFACE, method, arguments)


def registered(bus):
    """The items the watcher knows; none when there is no watcher."""
    try:
        entries = bus.property(
            WATCHER, "/StatusNotifierWatcher", WATCHER, "RegisteredStatusNotifierItems"
        )
    except GLib.Error:
        return []
    items = []
    for entry in entries:
        service, slash, path = entry.partition("/")
        # GNOME's extension parts the two by an "@".
        service = service.removesuffix("@")
        items.append(Item(bus, service, slash + path if slash else "/StatusNotifierItem"))
    return items


def find(bus, identifier):
    """The registered item with that Id, or None."""
    for item in registered(bus):
        try:
            if item.property("Id") == identifier:
                return item
        except GLib.Error:
            continue  # It left between the two calls.
    return None


def wait_for(bus, identifier, seconds=5.0):
    return wait_until(lambda: find(bus, identifier), f"the item {identifier}", seconds)


def wait_until_gone(bus, identifier, seconds=5.0):
    wait_until(lambda: not find(bus, identifier), f"{identifier} to leave the tray", seconds)
