#!/usr/bin/env python3
"""Draws an SVG file as a Mac's icon file, for the build only.

    draw_icns.py RSVG-CONVERT IN.svg OUT.icns

The two smallest pictures are pixels with a mask, which every system reads; the others are PNG files.
On a Mac's icon grid the tile leaves a margin; in the smallest sizes it has no pixel to give away.
"""
import pathlib
import struct
import subprocess
import sys
import zlib

# Type of a picture, its width in pixels: for screens of one pixel per point, then of two.
PICTURES = {"ic07": 128, "ic08": 256, "ic09": 512, "ic11": 32, "ic12": 64, "ic13": 256, "ic14": 512, "ic10": 1024}
# Type of the colours and of the mask.
PIXELS = {16: ("is32", "s8mk"), 32: ("il32", "l8mk")}
LARGE = 128
# The drawing's tile is 120 of 128 units wide, and 824 of 1024 pixels on the grid.
SHARE = 824 / 1024 * 128 / 120


def picture(convert, drawing, size):
    inner = round(size * SHARE / 2) * 2 if size >= LARGE else size
    margin = (size - inner) // 2
    return subprocess.run(
        [convert, "--width", str(inner), "--height", str(inner), "--page-width", str(size), "--page-height", str(size),
         "--left", str(margin), "--top", str(margin), drawing], check=True, stdout=subprocess.PIPE).stdout


def pixels(png):
    """The four bytes of every pixel: red, green, blue, opacity, row after row."""
    chunks, place = {b"IDAT": b""}, 8
    while place < len(png):
        length, name = struct.unpack_from(">I4s", png, place)
        chunks[name] = chunks.get(name, b"") + png[place + 8:place + 8 + length]
        place += 12 + length
    width, height, depth, colours, _, _, interlaced = struct.unpack(">2I5B", chunks[b"IHDR"])
    if (depth, colours, interlaced) != (8, 6, 0):
        raise SystemExit(f"draw_icns: a picture of {depth} bits, kind {colours}, interlaced {interlaced}")
    data, stride, above, rows = zlib.decompress(chunks[b"IDAT"]), width * 4, bytes(width * 4), []
    for y in range(height):
        kind, row = data[y * (stride + 1)], bytearray(data[y * (stride + 1) + 1:(y + 1) * (stride + 1)])
        for x in range(stride):
            left, corner = (row[x - 4], above[x - 4]) if x >= 4 else (0, 0)
            row[x] = row[x] + guess(kind, left, above[x], corner) & 0xFF
        rows.append(bytes(row))
        above = row
    return b"".join(rows)


def guess(kind, left, above, corner):
    """What PNG's five filters expect of a byte from its neighbours."""
    if kind == 4:
        distances = [abs(above - corner), abs(left - corner), abs(left + above - 2 * corner)]
        return (left, above, corner)[distances.index(min(distances))]
    return (0, left, above, (left + above) // 2)[kind]


def packed(channel):
    """Runs of 3 to 130 equal bytes as two bytes, others as they are, up to 128 after their count."""
    result, plain, place = b"", b"", 0
    while place <= len(channel):
        run = 1
        while place + run < len(channel) and run < 130 and channel[place + run] == channel[place]:
            run += 1
        end = place == len(channel)
        if plain and (end or run >= 3 or len(plain) == 128):
            result += bytes([len(plain) - 1]) + plain
            plain = b""
        if end:
            break
        if run >= 3:
            result += bytes([0x80 + run - 3, channel[place]])
            place += run
        else:
            plain += channel[place:place + 1]
            place += 1
    return result


def element(name, data):
    return name.encode() + struct.pack(">I", len(data) + 8) + data


def main():
    convert, drawing, target = sys.argv[1:]
    elements = b""
    for size, (colours, mask) in PIXELS.items():
        raw = pixels(picture(convert, drawing, size))
        elements += element(colours, b"".join(packed(raw[channel::4]) for channel in range(3)))
        elements += element(mask, raw[3::4])
    for name, size in PICTURES.items():
        elements += element(name, picture(convert, drawing, size))
    pathlib.Path(target).write_bytes(element("icns", elements))


if __name__ == "__main__":
    main()
