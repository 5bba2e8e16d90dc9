"""Writes the ad-hoc signature of a Mac's bundle, as codesign does on a Mac for nobody ("-").

A program's signature has the hash of each of its pages and, in special slots, those of the bundle's
Info.plist, of the list of its other files (_CodeSignature/CodeResources), of the entitlements and of
the requirements, of which there are none. The list names what lies in the bundle, a bundle inside it
by the hashes of its program's signature. Nobody vouches for it: it only holds the bundle together.
"""
import hashlib
import os
import pathlib
import plistlib
import re
import struct

SUPER_BLOB, DIRECTORY, REQUIREMENTS = 0xFADE0CC0, 0xFADE0C02, 0xFADE0C01
ENTITLEMENTS, ENTITLEMENTS_DER, WRAPPER = 0xFADE7171, 0xFADE7172, 0xFADE0B01
SIGNATURE_SLOT = 0x10000
VERSION_WITH_TEXT_SEGMENT, ADHOC, SHA256 = 0x20400, 2, 2
SEGMENT_64, CODE_SIGNATURE, EXECUTE = 0x19, 0x1D, 2
PAGE_BITS = {0x01000007: 12, 0x0100000C: 14}

# Which files the list names and how, for systems before 10.9 and since: the heaviest rule decides.
COMMON_RULES = {
    r"^Resources/.*\.lproj/": {"optional": True, "weight": 1000.0},
    r"^Resources/.*\.lproj/locversion.plist$": {"omit": True, "weight": 1100.0},
    r"^Resources/Base\.lproj/": {"weight": 1010.0},
}
OLD_RULES = {**COMMON_RULES, r"^Resources/": True, r"^version.plist$": True}
NESTED = ("Frameworks|SharedFrameworks|PlugIns|Plug-ins|XPCServices|Helpers|MacOS|"
          "Library/(Automator|Spotlight|LoginItems)")
RULES = {
    **COMMON_RULES,
    r"^.*": True,
    r".*\.dSYM($|/)": {"weight": 11.0},
    r"^(.*/)?\.DS_Store$": {"omit": True, "weight": 2000.0},
    rf"^({NESTED})/": {"nested": True, "weight": 10.0},
    r"^[^/]+$": {"nested": True, "weight": 10.0},
    r"^Info\.plist$": {"omit": True, "weight": 20.0},
    r"^PkgInfo$": {"omit": True, "weight": 20.0},
    r"^Resources/": {"weight": 20.0},
    r"^embedded\.provisionprofile$": {"weight": 20.0},
    r"^version\.plist$": {"weight": 20.0},
}


def rule_of(rules, path):
    """The heaviest rule for a path; None when none fits or it says to omit."""
    fitting = [{} if rule is True else rule for pattern, rule in rules.items() if re.search(pattern, path)]
    rule = max(fitting, key=lambda each: each.get("weight", 1.0), default=None)
    return None if rule is None or rule.get("omit") else rule


def walk(contents):
    """(path, file or bundle) below a folder; a bundle inside is not entered."""
    for folder, folders, files in os.walk(contents):
        bundles = [name for name in folders if name.endswith(".app")]
        folders[:] = sorted(name for name in folders if name not in bundles and name != "_CodeSignature")
        for name in sorted([*files, *bundles]):
            path = pathlib.Path(folder, name)
            yield path.relative_to(contents).as_posix(), path


def resources(contents, executable):
    """The text of CodeResources for a bundle's folder, whose main program is left out."""
    old, new = {}, {}
    for path, file in walk(contents):
        if path == executable:
            continue
        if file.is_file() and (rule := rule_of(OLD_RULES, path)) is not None:
            digest = hashlib.sha1(file.read_bytes()).digest()
            old[path] = {"hash": digest, "optional": True} if rule.get("optional") else digest
        if (rule := rule_of(RULES, path)) is None:
            continue
        if rule.get("nested"):
            new[path] = nested(file)
        else:
            new[path] = {"hash2": hashlib.sha256(file.read_bytes()).digest()}
            if rule.get("optional"):
                new[path]["optional"] = True
    text = plistlib.dumps({"files": old, "files2": new, "rules": OLD_RULES, "rules2": RULES})
    # Weights are whole, and written so.
    return re.sub(rb"(<real>\d+)\.0</real>", rb"\1</real>", text)


def nested(bundle):
    info = plistlib.loads((bundle / "Contents/Info.plist").read_bytes())
    hashes = code_hashes((bundle / "Contents/MacOS" / info["CFBundleExecutable"]).read_bytes())
    return {"cdhash": hashes[0], "requirement": " or ".join(f'cdhash H"{each.hex()}"' for each in hashes)}


def code_hashes(data):
    """What names the signed code of each slice."""
    if struct.unpack_from(">I", data)[0] == 0xCAFEBABE:
        count = struct.unpack_from(">I", data, 4)[0]
        places = [struct.unpack_from(">2I", data, 8 + index * 20 + 8) for index in range(count)]
        return [code_hashes(data[place:place + length])[0] for place, length in places]
    place, _ = struct.unpack_from("<2I", data, commands(data)[CODE_SIGNATURE] + 8)
    start = place + struct.unpack_from(">I", data, place + 16)[0]
    length = struct.unpack_from(">I", data, start + 4)[0]
    return [hashlib.sha256(data[start:start + length]).digest()[:20]]


def commands(data):
    """{command, or a segment's name: where it is} of one slice."""
    found, offset = {}, 32
    for _ in range(struct.unpack_from("<I", data, 16)[0]):
        command, size = struct.unpack_from("<2I", data, offset)
        found[bytes(data[offset + 8:offset + 24]).rstrip(b"\0") if command == SEGMENT_64 else command] = offset
        offset += size
    return found


def blob(magic, body):
    return struct.pack(">2I", magic, len(body) + 8) + body


def der(tag, body):
    if len(body) > 127:
        raise SystemExit("codesign: more entitlements than the short form of a length can tell")
    return bytes([tag, len(body)]) + body


def entitlements_der(values):
    """The second form of the entitlements, which macOS 12 reads."""
    if any(value is not True for value in values.values()):
        raise SystemExit("codesign: an entitlement is not just granted")
    pairs = [der(0x30, der(0x0C, key.encode()) + der(1, b"\xff")) for key in sorted(values)]
    return der(0x70, der(2, b"\1") + der(0xB0, b"".join(pairs)))


def signature(data, limit, identifier, special):
    """The signature of a slice up to the limit; special gives the content that a slot has the hash of."""
    places = commands(data)
    _, cpu, _, kind = struct.unpack_from("<4I", data)
    text = struct.unpack_from("<2Q", data, places[b"__TEXT"] + 40)
    bits = PAGE_BITS[cpu]
    slots = [hashlib.sha256(special[slot]).digest() if slot in special else bytes(32)
             for slot in range(max(special), 0, -1)]
    pages = [hashlib.sha256(data[place:min(place + (1 << bits), limit)]).digest()
             for place in range(0, limit, 1 << bits)]
    name = identifier.encode() + b"\0"
    # Magic number, length and what is packed here.
    header = 8 + 80
    directory = blob(DIRECTORY, struct.pack(
        ">7I4B4I4Q", VERSION_WITH_TEXT_SEGMENT, ADHOC, header + len(name) + 32 * len(slots), header, len(slots),
        len(pages), limit, 32, SHA256, 0, bits, 0, 0, 0, 0, 0, *text, kind == EXECUTE)
        + name + b"".join([*slots, *pages]))
    # A slot for a file of the bundle has only its hash here.
    inside = {slot: special[slot] for slot in (2, 5, 7) if slot in special}
    blobs = {0: directory, **inside, SIGNATURE_SLOT: blob(WRAPPER, b"")}
    index, content, place = b"", b"", 12 + 8 * len(blobs)
    for slot, each in blobs.items():
        index += struct.pack(">2I", slot, place + len(content))
        content += each
    return blob(SUPER_BLOB, struct.pack(">I", len(blobs)) + index + content)


def signed(data, identifier, info, listed, entitlements=None):
    """A slice with a signature instead of its old one, for a bundle with this Info.plist and CodeResources."""
    special = {1: info, 2: blob(REQUIREMENTS, bytes(4)), 3: listed}
    if entitlements:
        special[5] = blob(ENTITLEMENTS, entitlements)
        special[7] = blob(ENTITLEMENTS_DER, entitlements_der(plistlib.loads(entitlements)))
    data = bytearray(data)
    places, cpu = commands(data), struct.unpack_from("<I", data, 4)[0]
    limit, room = struct.unpack_from("<2I", data, places[CODE_SIGNATURE] + 8)
    start = struct.unpack_from("<Q", data, places[b"__LINKEDIT"] + 40)[0]
    needed = len(signature(data, limit, identifier, special))
    if needed > room:
        room, page = needed + 15 & ~15, 1 << PAGE_BITS[cpu]
        size = limit + room - start
        struct.pack_into("<I", data, places[CODE_SIGNATURE] + 12, room)
        struct.pack_into("<Q", data, places[b"__LINKEDIT"] + 48, size)
        struct.pack_into("<Q", data, places[b"__LINKEDIT"] + 32, size + page - 1 & ~(page - 1))
    return bytes(data[:limit]) + signature(data, limit, identifier, special).ljust(room, b"\0")
