"""Reads object files, Mach-O programs and stubs with LLVM's tools. Plain values; judges nothing."""
import pathlib
import re
import shutil
import subprocess

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
OUT = ROOT / "build" / "mac"
STUBS = ROOT / "cross" / "macos" / "stubs"
ARCHITECTURES = ("x86_64", "arm64")
# Programs that Apple's own linker made, out of packages: where their names are bound is evidence.
LINKED_BY_APPLE = ("NativeScript", "terminal-notifier")
LIBCXX_13 = ("libc++1-13", "libc++abi1-13")


def run(*command):
    done = subprocess.run([str(each) for each in command], capture_output=True, text=True, check=False)
    if done.returncode != 0:
        raise SystemExit(f"{command[0]} failed: {done.stderr.strip()}")
    return done.stdout


def objects(architecture):
    """Every object file of a build."""
    found = sorted((OUT / architecture).rglob("*.o"))
    if not found:
        raise SystemExit(f"nothing is built for {architecture}: scripts/mac/build")
    return found


def wanted(files):
    """Symbols that the files want of somebody else."""
    undefined = set(run("llvm-nm-19", "--undefined-only", "-j", "-A", *files).split())
    undefined = {line.rsplit(":", 1)[-1] for line in undefined}
    defined = {line.rsplit(":", 1)[-1] for line in run("llvm-nm-19", "--defined-only", "-j", "-A", *files).split()}
    return undefined - defined


def binds(program, architecture=None):
    """{symbol: (image, is weak import)} of everything that dyld binds, from all three tables."""
    found = {}
    arch = ["--arch", architecture] if architecture else []
    for table in ("--bind", "--lazy-bind", "--weak-bind"):
        for line in run("llvm-objdump-19", "--macho", *arch, table, program).splitlines():
            words = line.split()
            if len(words) < 5 or not words[0].startswith("__"):
                continue
            weak = words[-1] == "(weak_import)"
            if weak:
                words.pop()
            # A coalesced symbol has no image of its own.
            if table != "--weak-bind":
                found[words[-1]] = (words[-2], weak)
    return found


def stub_symbols(path):
    """{symbol: is weakly defined} that a stub claims; classes by their two symbols."""
    text = re.sub(r"#.*", "", path.read_text(encoding="utf-8"))
    found = {}
    for key, body in re.findall(r"([a-z-]+):\s*\[(.*?)\]", text, flags=re.DOTALL):
        names = [name.strip().strip("'\"") for name in body.split(",") if name.strip()]
        if key in ("symbols", "weak-symbols"):
            found.update({name: key == "weak-symbols" for name in names})
        elif key == "objc-classes":
            for name in names:
                found[f"_OBJC_CLASS_$_{name}"] = found[f"_OBJC_METACLASS_$_{name}"] = False
    return found


def old_libcxx():
    """What LLVM 13's C++ library exports, with the underscore of the Mac's names.

    The one on the oldest Mac is older, by what libc++'s own availability marks say of it."""
    folder = OUT / "libcxx-13"
    if not folder.is_dir():
        fresh = OUT / "libcxx-13.new"
        shutil.rmtree(fresh, ignore_errors=True)
        fresh.mkdir(parents=True)
        for package in LIBCXX_13:
            command = ["apt-get", "-q", "-o", "Acquire::Retries=3", "download", package]
            done = subprocess.run(command, cwd=fresh, capture_output=True, text=True, check=False)
            if done.returncode != 0:
                raise SystemExit(f"apt-get could not download {package}: {done.stderr.strip()}")
        for archive in fresh.glob("*.deb"):
            run("dpkg-deb", "-x", archive, fresh)
        fresh.rename(folder)
    libraries = [path for path in folder.rglob("*.so.1.0") if path.is_file() and not path.is_symlink()]
    if len(libraries) != len(LIBCXX_13):
        raise SystemExit(f"expected {len(LIBCXX_13)} libraries in {folder}, found {len(libraries)}")
    names = run("llvm-nm-19", "-D", "--defined-only", "-j", "-A", *libraries).splitlines()
    return {"_" + name.rsplit(" ", 1)[-1].rsplit(":", 1)[-1].split("@")[0] for name in names if name.strip()}
