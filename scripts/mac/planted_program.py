"""A small program that can be built with one thing wrong, for check-program's self-test."""
import subprocess

import binaries
import declarations

TEXT = """
#import <AppKit/AppKit.h>
// Without saying since when: the compiler can't know it is newer.
@interface SMAppService : NSObject
@end
@protocol Planted
- (void)selectorThatNobodyHas;
- (void)selectorOfOurs;
@end
extern "C" void* _ZNSt3__119__is_posix_terminalEP7__sFILE(void*);
@interface Ours : NSObject
- (void)selectorOfOurs;
PLANTED_PROPERTY
@end
@interface Ours (Promised)
@property(nonatomic) int promisedLevel;
@end
@implementation Ours
- (void)selectorOfOurs {
}
PLANTED_DYNAMIC
@end
int main() {
  [(id<Planted>)[[Ours alloc] init] PLANTED_SELECTOR];
  PLANTED_CLASS
  PLANTED_CXX
  return NSApp ? 0 : 1;
}
"""
STUB = """--- !tapi-tbd
tbd-version: 4
targets: [ x86_64-macos, arm64-macos ]
install-name: '{path}'
compatibility-version: 1
exports:
  - targets: [ x86_64-macos, arm64-macos ]
    symbols: [ {symbols} ]
    objc-classes: [ {classes} ]
...
"""


def build(folder, architecture, minimum, selector="selectorOfOurs", property_="", dynamic="", class_use="",
          cxx_use="", workspace="AppKit"):
    """Compiles and links the small program with what is planted; gives its path."""
    target = ["-target", f"{architecture}-apple-macos{minimum}", "-isysroot", str(declarations.SDK)]
    text = TEXT
    for name, use in (("SELECTOR", selector), ("PROPERTY", property_), ("DYNAMIC", dynamic), ("CLASS", class_use),
                      ("CXX", cxx_use)):
        text = text.replace("PLANTED_" + name, use)
    (folder / "planted.mm").write_text(text, encoding="utf-8")
    framework = "/System/Library/Frameworks/{0}.framework/Versions/A/{0}"
    for name, path, symbols, classes in [
            ("planted", framework.format(workspace), "", "NSWorkspace"),
            ("service", framework.format("ServiceManagement"), "", "SMAppService"),
            ("newcxx", "/usr/lib/libc++.1.dylib", "__ZNSt3__119__is_posix_terminalEP7__sFILE", "")]:
        stub = STUB.format(path=path, symbols=symbols, classes=classes)
        (folder / f"{name}.tbd").write_text(stub, encoding="utf-8")
    include = declarations.SDK / "usr/include/c++"
    compile_ = ["clang++-19", *target, "-nostdinc++", "-isystem", str(include / "site"),
                "-isystem", str(include / "v1"), "-std=c++20", "-fobjc-arc", "-c", "planted.mm", "-o", "planted.o"]
    link = ["clang++-19", *target, "-fuse-ld=lld", "-nodefaultlibs", "planted.o", "planted.tbd",
            "service.tbd", "newcxx.tbd", "-lSystem", "-lc++", "-lobjc", "-framework", "AppKit",
            "-framework", "Foundation", f"@{binaries.STUBS / 'anywhere.rsp'}", "-Wl,-adhoc_codesign", "-o", "program"]
    for command in (compile_, link):
        done = subprocess.run(command, cwd=folder, capture_output=True, text=True, check=False)
        if done.returncode != 0:
            raise SystemExit(f"self-test: {done.stderr}")
    return folder / "program"
