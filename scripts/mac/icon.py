"""Reads Kelvane.icns back and compares it with the drawing."""
import pathlib
import struct
import subprocess
import sys
import tempfile
import zlib

import binaries

sys.path.insert(0, str(binaries.ROOT / "assets"))
import draw_icns  # noqa: E402

DRAWING = binaries.ROOT / "assets/org.kelvane.Kelvane.svg"


def check(bundle):
    """The faults of a bundle's icon."""
    data = (bundle / "Contents/Resources/Kelvane.icns").read_bytes()
    if data[:8] != struct.pack(">4sI", b"icns", len(data)):
        yield "the icon's head tells another length"
        return
    meant = dict(draw_icns.PICTURES)
    pixels = {kind: size for size, kinds in draw_icns.PIXELS.items() for kind in kinds}
    place = 8
    while place < len(data):
        kind, length = struct.unpack_from(">4sI", data, place)
        kind, content = kind.decode(), data[place + 8:place + length]
        if kind in pixels:
            del pixels[kind]
        elif kind not in meant:
            yield f"the icon has {kind}, which is not meant"
        else:
            yield from check_png(kind, content, meant.pop(kind))
        place += length
    yield from (f"the icon has no {kind} for {size} pixels" for kind, size in {**meant, **pixels}.items())
    with tempfile.TemporaryDirectory() as scratch:
        command = ["icns2png", "-x", "-o", scratch, bundle / "Contents/Resources/Kelvane.icns"]
        subprocess.run(command, capture_output=True, check=False)
        for size in draw_icns.PIXELS:
            read = pathlib.Path(scratch, f"Kelvane_{size}x{size}x32.png")
            drawn = draw_icns.picture("rsvg-convert", str(DRAWING), size)
            if not read.is_file() or visible(read.read_bytes()) != visible(drawn):
                yield f"another reader finds another picture of {size} pixels"


def visible(png):
    """Opacities, and the colours where there is any."""
    raw = draw_icns.pixels(png)
    return [raw[place:place + 4] if raw[place + 3] else None for place in range(0, len(raw), 4)]


def check_png(kind, png, size):
    width, height = struct.unpack_from(">2I", png, 16)
    if (png[:8], width, height) != (b"\x89PNG\r\n\x1a\n", size, size):
        yield f"{kind} is no picture of {size} pixels"
        return
    try:
        zlib.decompress(b"".join(idat(png)))
    except zlib.error as error:
        yield f"{kind}: {error}"


def idat(png):
    place = 8
    while place + 8 <= len(png):
        length, name = struct.unpack_from(">I4s", png, place)
        if name == b"IDAT":
            yield png[place + 8:place + 8 + length]
        place += 12 + length
