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
    segments: dict = dataclasses.field(default_factory=dict)  # name: (size in memory, place, size in the file)
    signature: bytes = b""
    signature_end: int = 0


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
            each.segments[name(data[offset + 8:offset + 24])] = struct.unpack_from("<3Q", data, offset + 32)
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
            each.signature, each.signature_end = data[place:place + length], place + length
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
    return {part.decode(errors="replace") for part in section.split(b"\0") if part}


def blobs(each):
    """{slot: blob} of a signature; nothing without one."""
    whole = each.signature
    if not whole or struct.unpack_from(">I", whole)[0] != 0xFADE0CC0:
        return {}
    found = {}
    for index in range(struct.unpack_from(">I", whole, 8)[0]):
        slot, start = struct.unpack_from(">2I", whole, 12 + index * 8)
        found[slot] = whole[start:start + struct.unpack_from(">I", whole, start + 4)[0]]
    return found


@dataclasses.dataclass
class Directory:
    """What a signature says of the code, with its SHA-256 hashes."""
    identifier: str
    flags: int
    special: dict  # slot: hash, for those that there are
    pages: list
    page_size: int
    limit: int
    name: bytes  # what the system calls this very code


def directory(each):
    """The directory of a slice's signature, or None when there is none with such hashes."""
    blob = blobs(each).get(0, b"")
    if blob[:4] != b"\xfa\xde\x0c\x02":
        return None
    flags, place, identifier, special, pages, limit, size, kind, _, shift = struct.unpack_from(">6I4B", blob, 12)
    if kind != 2 or size != 32:
        return None
    hashes = [blob[place + index * size:place + (index + 1) * size] for index in range(-special, pages)]
    return Directory(
        blob[identifier:].split(b"\0")[0].decode(), flags,
        {special - index: each for index, each in enumerate(hashes[:special]) if any(each)},
        hashes[special:], 1 << shift, limit, hashlib.sha256(blob).digest()[:20])


def bad_pages(each):
    """(number of signed pages, those whose hash is another now); (0, 0) without a signature."""
    said = directory(each)
    if not said:
        return 0, 0
    places = range(0, said.limit, said.page_size)
    now = [hashlib.sha256(each.data[place:min(place + said.page_size, said.limit)]).digest() for place in places]
    return len(said.pages), sum(a != b for a, b in zip(said.pages, now)) + abs(len(said.pages) - len(now))
