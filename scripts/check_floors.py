#!/usr/bin/env python3
"""Checks that every file under src/ includes only what its floor may see.

    scripts/check_floors.py [--root DIR]   prints one line per violation, exit code 1 if there is any
    scripts/check_floors.py --self-test    plants violations in a scratch tree and expects each of them

It reads text, not the preprocessor's result: an include inside a false #if counts too.
"""
import argparse
import pathlib
import re
import sys
import tempfile

# Lowest first. A folder sees the folders of the floors below it and itself; rooms of one floor
# do not see each other.
FLOORS = [
    ["platform"],
    ["reactive"],
    ["store"],
    ["kit"],
    ["settings", "battery"],
    ["menubar", "menu", "notifications", "intents"],
    ["app"],
]
APPLICATION = {room for floor in FLOORS[1:] for room in floor}

# What each room sees of src/, and of the outside: "standard" (the C++ library), "json" (nlohmann),
# "system" (any other library).
SEES = {
    "platform": ({"platform"}, {"standard"}),
    "platform/portable": ({"platform", "platform/portable"}, {"standard"}),
    "platform/memory": ({"platform", "platform/portable", "platform/memory"}, {"standard", "system"}),
    "platform/linux": ({"platform", "platform/portable", "platform/linux"}, {"standard", "json", "system"}),
    "platform/macos": ({"platform", "platform/portable", "platform/macos"}, {"standard", "system"}),
}
for level, floor in enumerate(FLOORS[1:], start=1):
    below = {room for lower in FLOORS[:level] for room in lower}
    for each in floor:
        SEES[each] = (below | {each}, {"standard", "json"})
SEES["programs"] = (set(SEES) | {"programs"}, {"standard", "json", "system"})

# x_test.cpp, and x_test.h that several of them share, see this besides.
TESTS_SEE = ({"platform/memory", "platform/portable"}, {"test"})

STANDARD = set("""
    algorithm any array atomic barrier bit bitset cassert cctype cerrno cfenv cfloat charconv chrono
    cinttypes climits clocale cmath codecvt compare complex concepts condition_variable coroutine
    csetjmp csignal cstdarg cstddef cstdint cstdio cstdlib cstring ctime cuchar cwchar cwctype deque
    exception execution filesystem forward_list fstream functional future initializer_list iomanip
    ios iosfwd iostream istream iterator latch limits list locale map memory memory_resource mutex
    new numbers numeric optional ostream queue random ranges ratio regex scoped_allocator semaphore
    set shared_mutex source_location span sstream stack stdexcept stop_token streambuf string
    string_view syncstream system_error thread tuple type_traits typeindex typeinfo unordered_map
    unordered_set utility valarray variant vector version""".split())

SUFFIXES = {".h", ".hpp", ".c", ".cpp", ".m", ".mm", ".inc"}
INCLUDE = re.compile(r'^\s*#\s*(?:include|import)\b\s*(?:<([^>]+)>|"([^"]+)"|(\S+))')
PLATFORM_MACRO = re.compile(r"^\s*#\s*(?:if|ifdef|ifndef|elif)\b.*\b(__linux__|__APPLE__|_WIN32|TARGET_OS_\w+)\b")


def room_of(path):
    """The room a file (relative to src/) lives in; programs is one room, platform is several."""
    parts = path.parts[:-1]
    if parts[:1] == ("platform",):
        return "/".join(parts[:2])
    return parts[0] if parts else ""


def kind_of(header):
    """What a header that does not live under src/ is."""
    if header in STANDARD:
        return "standard"
    if header in ("nlohmann/json.hpp", "nlohmann/json_fwd.hpp"):
        return "json"
    if header.startswith(("gtest/", "gmock/")):
        return "test"
    return "system"


def violations_of(src, path):
    room = room_of(path)
    if room not in SEES:
        yield 0, f"'{room}' is on no floor"
        return
    rooms, kinds = SEES[room]
    if re.search(r"_test\.(cpp|h|mm)$", path.name):
        rooms, kinds = rooms | TESTS_SEE[0], kinds | TESTS_SEE[1]
    for number, line in enumerate((src / path).read_text(encoding="utf-8").splitlines(), start=1):
        if room in APPLICATION and (macro := PLATFORM_MACRO.match(line)):
            yield number, f"'{macro[1]}' in shared code: it belongs in an adaptor"
        if not (found := INCLUDE.match(line)):
            continue
        header = found[1] or found[2]
        if not header:
            yield number, f"'{found[3]}' is computed, so nobody can check it"
        elif (src / header).is_file():
            target = room_of(pathlib.PurePath(header))
            if target not in rooms:
                yield number, f"'{room}' may not see '{target}' ({header})"
        elif found[2] and room != "programs" and kind_of(header) != "test":
            yield number, f'"{header}" is not a file under src/'
        elif kind_of(header) not in kinds and room != "programs":
            yield number, f"'{room}' may not see <{header}>"


def check(root):
    src = root / "src"
    files = sorted(p.relative_to(src) for p in src.rglob("*") if p.suffix in SUFFIXES and p.is_file())
    found = [f"src/{path}:{number}: {text}" for path in files for number, text in violations_of(src, path)]
    return len(files), found


# (file, its text, the part of the message expected or None)
PLANTED = [
    ("platform/a.h", "#include <string>", None),
    ("platform/b.h", '#include "platform/portable/p.h"', "may not see 'platform/portable'"),
    ("platform/c.h", "#include <unistd.h>", "may not see <unistd.h>"),
    ("platform/portable/p.h", '#include "platform/a.h"', None),
    ("platform/portable/q.h", '#include "reactive/r.h"', "may not see 'reactive'"),
    ("platform/portable/s.h", "#include <plist/plist.h>", "may not see <plist/plist.h>"),
    ("platform/linux/l.cpp", '#include "platform/portable/p.h"\n#include <gio/gio.h>', None),
    ("platform/linux/m.cpp", '#include "platform/memory/m.h"', "may not see 'platform/memory'"),
    ("platform/linux/n.cpp", '#include "l.h"', "is not a file under src/"),
    ("platform/linux/n_test.cpp", '#include "platform/memory/m.h"\n#include <gtest/gtest.h>', None),
    ("platform/linux/o.cpp", '#include "battery/b.h"', "may not see 'battery'"),
    ("platform/memory/m.h", '#include "platform/linux/l.cpp"', "may not see 'platform/linux'"),
    ("platform/haiku/h.cpp", "", "is on no floor"),
    ("reactive/r.h", '#include "platform/a.h"\n#include <functional>', None),
    ("store/s.cpp", '#include "kit/k.h"', "may not see 'kit'"),
    ("kit/k.h", '#include "store/s.cpp"\n#include <nlohmann/json.hpp>', None),
    ("kit/x_test.cpp", '#include "platform/memory/m.h"\n#include "gmock/gmock.h"', None),
    ("kit/y.cpp", "#include <gtest/gtest.h>", "may not see <gtest/gtest.h>"),
    ("settings/s.cpp", '#include "battery/b.h"', "may not see 'battery'"),
    ("battery/b.h", "  #  include <glib.h>", "may not see <glib.h>"),
    ("battery/c.cpp", "#ifdef __linux__\n#endif", "in shared code"),
    ("menubar/m.h", '#include "battery/b.h"', None),
    ("menu/n.cpp", '#include "menubar/m.h"', "may not see 'menubar'"),
    ("menu/o_test.cpp", '#include "menubar/m.h"', "may not see 'menubar'"),
    ("notifications/n.cpp", '#include "platform/linux/l.cpp"', "may not see 'platform/linux'"),
    ("intents/i.cpp", "#include HEADER", "is computed"),
    ("app/a.cpp", '#include "menu/n.cpp"\n#include "intents/i.cpp"', None),
    ("app/b.cpp", '#include "platform/memory/m.h"', "may not see 'platform/memory'"),
    ("app/c.cpp", '#include "programs/kelvane/main.cpp"', "may not see 'programs'"),
    ("programs/kelvane/main.cpp", '#include "app/a.cpp"\n#include "platform/linux/l.cpp"\n#include <CLI/CLI.hpp>', None),
    ("attic/z.cpp", "", "is on no floor"),
    ("z.cpp", "", "is on no floor"),
]


def self_test():
    with tempfile.TemporaryDirectory() as scratch:
        root = pathlib.Path(scratch)
        for name, text, _ in PLANTED:
            (root / "src" / name).parent.mkdir(parents=True, exist_ok=True)
            (root / "src" / name).write_text(text + "\n", encoding="utf-8")
        count, found = check(root)
    wrong = [f"{len(PLANTED)} files planted, {count} read"] if count != len(PLANTED) else []
    for name, _, expected in PLANTED:
        lines = [line for line in found if line.startswith(f"src/{name}:")]
        if len(lines) != (expected is not None) or (expected and expected not in lines[0]):
            wrong.append(f"src/{name}: expected {expected or 'nothing'}, got {lines or 'nothing'}")
    return wrong


def main():
    parser = argparse.ArgumentParser(description="Check what each floor of src/ includes.")
    parser.add_argument("--root", type=pathlib.Path, default=pathlib.Path(__file__).resolve().parent.parent)
    parser.add_argument("--self-test", action="store_true")
    arguments = parser.parse_args()
    if arguments.self_test:
        found, done = self_test(), f"self-test of {len(PLANTED)} planted files passed"
    else:
        count, found = check(arguments.root)
        if count == 0:
            found = [f"no source file under {arguments.root}/src"]
        done = f"{count} files keep to their floors"
    print(*found, sep="\n", end="\n" if found else "")
    print(f"check_floors: {len(found)} violations" if found else f"check_floors: {done}")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
