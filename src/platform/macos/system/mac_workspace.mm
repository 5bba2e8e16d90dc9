#include "platform/macos/system/mac_workspace.h"

#import <AppKit/AppKit.h>

#include "platform/macos/foundation/strings.h"
#include "platform/macos/system/mac_system_info.h"
#include "platform/portable/macos_names.h"

namespace kelvane {
namespace {

void open(NSURL* url) {
  if (url) [NSWorkspace.sharedWorkspace openURL:url];
}

}  // namespace

void MacWorkspace::openUrl(const std::string& url) {
  @autoreleasepool {
    NSString* text = stringOf(url);
    if (text) open([NSURL URLWithString:text]);
  }
}

void MacWorkspace::openFile(const std::string& path) {
  @autoreleasepool {
    NSString* text = stringOf(path);
    // An empty path is an exception to the system.
    if (text.length > 0) open([NSURL fileURLWithPath:text]);
  }
}

void MacWorkspace::openBatterySettings() { openFile(batteryPreferencePane(systemVersion())); }

}  // namespace kelvane
