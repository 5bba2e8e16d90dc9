"""Reads a Mach-O file: its slices, sections, versions, libraries and the pages of its signature."""
import dataclasses
import hashlib
import struct

CPUS = {0x01000007: "x86_64", 0x0100000C: "arm64"}
LOAD_DYLIB, LOAD_WEAK_DYLIB, SEGMENT_64, CODE_SIGNATURE, BUILD_VERSION = 0xC, 0x80000018, 0x19, 0x1D, 0x32
MACOS = 1


@dataclasses.dataclass
class Slice:
    architecture: str
    data: bytes
    platform: int = 0
    minimum: tuple = ()
    sdk: tuple = ()
    libraries: dict = dataclasses.field(default_factory=dict)  # path: is weak
    sections: dict = dataclasses.field(default_factory=dict)  # (segment, section): bytes
    signature: bytes = b""


def version(number):
    return number >> 16, number >> 8 & 0xFF


def name(raw):
    return raw.rstrip(b"\0").decode()


def read_slice(data):
    magic, cpu, _, _, count, _ = struct.unpack_from("<6I", data)
    if magic != 0xFEEDFACF or cpu not in CPUS:
        raise SystemExit(f"not a 64-bit Mach-O of a Mac: {magic:#x}, {cpu:#x}")
    each = Slice(CPUS[cpu], data)
    offset = 32
    for _ in range(count):
        command, size = struct.unpack_from("<2I", data, offset)
        if command == SEGMENT_64:
            for index in range(struct.unpack_from("<I", data, offset + 64)[0]):
                start = offset + 72 + index * 80
                length, place = struct.unpack_from("<QI", data, start + 40)
                key = name(data[start + 16:start + 32]), name(data[start:start + 16])
                each.sections[key] = data[place:place + length]
        elif command in (LOAD_DYLIB, LOAD_WEAK_DYLIB):
            path = data[offset + struct.unpack_from("<I", data, offset + 8)[0]:offset + size]
            each.libraries[path.split(b"\0")[0].decode()] = command == LOAD_WEAK_DYLIB
        elif command == BUILD_VERSION:
            each.platform, minimum, sdk = struct.unpack_from("<3I", data, offset + 8)
            each.minimum, each.sdk = version(minimum), version(sdk)
        elif command == CODE_SIGNATURE:
            place, length = struct.unpack_from("<2I", data, offset + 8)
            each.signature = data[place:place + length]
        offset += size
    return each


def read(data):
    """The slices of a universal file, or the one of another."""
    magic, count = struct.unpack_from(">2I", data)
    if magic != 0xCAFEBABE:
        return [read_slice(data)]
    found = []
    for index in range(count):
        _, _, place, length, _ = struct.unpack_from(">5I", data, 8 + index * 20)
        found.append(read_slice(data[place:place + length]))
    return found


def strings(section):
    return {part.decode() for part in section.split(b"\0") if part}


def bad_pages(each):
    """(number of signed pages, those whose hash is another now); (0, 0) without a signature."""
    blob = each.signature
    if not blob or struct.unpack_from(">I", blob)[0] != 0xFADE0CC0:
        return 0, 0
    for index in range(struct.unpack_from(">I", blob, 8)[0]):
        start = struct.unpack_from(">I", blob, 12 + index * 8 + 4)[0]
        if struct.unpack_from(">I", blob, start)[0] == 0xFADE0C02:
            break
    else:
        return 0, 0
    hashes, _, _, pages, limit, size, kind, _, shift = struct.unpack_from(">5I4B", blob, start + 16)
    if kind != 2 or size != 32:
        return 0, 0
    bad = 0
    for page in range(pages):
        content = each.data[page << shift:min((page + 1) << shift, limit)]
        place = start + hashes + page * size
        bad += hashlib.sha256(content).digest() != blob[place:place + size]
    return pages, bad
