"""Recomputes what a bundle's signature says, apart from the code that wrote it (codesign.py)."""
import hashlib
import plistlib
import re

import macho

HELPER = "Contents/Library/LoginItems/Kelvane-AutoStartHelper.app"
ENTITLEMENTS = {"com.apple.security.app-sandbox": True}
ADHOC = 2


def files(bundle):
    return {path.relative_to(bundle).as_posix() for path in bundle.rglob("*") if not path.is_dir()}


def slices(program):
    return macho.read(program.read_bytes())


def check(bundle):
    """The faults of the signatures and lists of a bundle and the one inside it."""
    for folder, inside in ((bundle / HELPER, None), (bundle, HELPER)):
        contents = folder / "Contents"
        info = (contents / "Info.plist").read_bytes()
        said = plistlib.loads(info)
        listed = (contents / "_CodeSignature/CodeResources").read_bytes()
        program = f"MacOS/{said['CFBundleExecutable']}"
        for each in slices(contents / program):
            yield from (f"{folder.name} ({each.architecture}): {fault}"
                        for fault in check_signature(each, said["CFBundleIdentifier"], info, listed))
        yield from (f"{folder.name}: {fault}"
                    for fault in check_listed(contents, program, plistlib.loads(listed), inside))


def check_signature(each, identifier, info, listed):
    said, blobs = macho.directory(each), macho.blobs(each)
    if not said:
        yield "there is no signature"
        return
    memory, place, size = each.segments["__LINKEDIT"]
    if not place + size == each.signature_end == len(each.data) or memory < size:
        yield "the signature is not the end of the program"
    if (said.identifier, said.flags) != (identifier, ADHOC):
        yield f"signed as {said.identifier}, flags {said.flags:#x}"
    if (bad := macho.bad_pages(each)[1]):
        yield f"{bad} pages have another hash"
    expected = {1: info, 2: blobs.get(2, b""), 3: listed, 5: blobs.get(5, b""), 7: blobs.get(7, b"")}
    for slot, content in expected.items():
        if said.special.get(slot) != hashlib.sha256(content).digest():
            yield f"slot {slot} has another hash"
    both = all(key.encode() in expected[7] for key in ENTITLEMENTS)
    if plistlib.loads(expected[5][8:]) != ENTITLEMENTS or not both:
        yield "other entitlements"


def check_listed(contents, program, listed, inside):
    """The list of a bundle names all files but four, with their hashes, and a bundle inside as one."""
    there = files(contents) - {"Info.plist", "PkgInfo", "_CodeSignature/CodeResources", program}
    if inside:
        inside = inside.removeprefix("Contents/")
        there = {path for path in there if not path.startswith(inside + "/")}
        yield from check_nested(contents / inside, listed["files2"].pop(inside, {}))
    yield from (f"{path} is not sealed, or sealed and not there" for path in sorted(there ^ listed["files2"].keys()))
    for path in sorted(there & listed["files2"].keys()):
        content, old = (contents / path).read_bytes(), listed["files"].get(path)
        old = old["hash"] if isinstance(old, dict) else old
        now = hashlib.sha256(content).digest(), hashlib.sha1(content).digest()
        if (listed["files2"][path]["hash2"], old) != now:
            yield f"{path} has another hash"


def check_nested(bundle, sealed):
    name = plistlib.loads((bundle / "Contents/Info.plist").read_bytes())["CFBundleExecutable"]
    found = [macho.directory(each) for each in slices(bundle / "Contents/MacOS" / name)]
    hashes = [said.name for said in found if said]
    if not hashes or sealed.get("cdhash") != hashes[0] or re.findall(
            r'cdhash H"(\w+)"', sealed.get("requirement", "")) != [each.hex() for each in hashes]:
        yield f"{bundle.name} is sealed with other code"
