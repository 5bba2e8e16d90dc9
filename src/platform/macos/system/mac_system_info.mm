#include "platform/macos/system/mac_system_info.h"

#include <cstddef>

#import <AppKit/AppKit.h>
#include <libproc.h>
#include <sys/resource.h>
#include <sys/sysctl.h>
#include <sys/utsname.h>
#include <unistd.h>

#include "platform/macos/foundation/strings.h"
#include "platform/portable/macos_names.h"

namespace kelvane {
namespace {

std::optional<std::string> systemControl(const char* name) {
  std::size_t size = 0;
  if (sysctlbyname(name, nullptr, &size, nullptr, 0) != 0) return std::nullopt;
  std::string value(size, '\0');
  if (sysctlbyname(name, value.data(), &size, nullptr, 0) != 0) return std::nullopt;
  value.resize(size);
  value.resize(value.find_last_not_of('\0') + 1);  // it counts the final NUL
  return value.empty() ? std::nullopt : std::optional(value);
}

}  // namespace

SystemVersion systemVersion() {
  const NSOperatingSystemVersion version = NSProcessInfo.processInfo.operatingSystemVersion;
  return {.major = static_cast<int>(version.majorVersion),
          .minor = static_cast<int>(version.minorVersion),
          .patch = static_cast<int>(version.patchVersion)};
}

std::optional<SystemVersion> MacSystemInfo::macOSVersion() { return systemVersion(); }

std::string MacSystemInfo::systemDescription() { return macOSDescription(systemVersion()); }

bool MacSystemInfo::isLowPowerModeEnabled() {
  if (@available(macOS 12, *)) return NSProcessInfo.processInfo.lowPowerModeEnabled != 0;
  return false;
}

std::optional<std::string> MacSystemInfo::hardwareModel() { return systemControl("hw.model"); }

std::optional<std::string> MacSystemInfo::architecture() {
  utsname names{};
  if (uname(&names) != 0) return std::nullopt;
  return std::string(names.machine);
}

std::string MacSystemInfo::localeIdentifier() {
  @autoreleasepool {
    return textOf(NSLocale.currentLocale.localeIdentifier);
  }
}

std::string MacSystemInfo::languageNameInEnglish() {
  @autoreleasepool {
    NSString* code = NSLocale.currentLocale.languageCode;
    NSLocale* english = [[NSLocale alloc] initWithLocaleIdentifier:@"en"];
    NSString* name = [english localizedStringForLanguageCode:code];
    return textOf(name ? name : code);
  }
}

std::optional<std::uint64_t> MacSystemInfo::memoryFootprint() {
  rusage_info_v0 usage{};
  if (proc_pid_rusage(getpid(), RUSAGE_INFO_V0, reinterpret_cast<rusage_info_t*>(&usage)) != 0)
    return std::nullopt;
  return usage.ri_phys_footprint;
}

int MacSystemInfo::screenCount() { return static_cast<int>(NSScreen.screens.count); }

double MacSystemInfo::primaryScreenScale() {
  NSScreen* primary = NSScreen.screens.firstObject;
  return primary ? primary.backingScaleFactor : 1.0;
}

bool MacSystemInfo::prefersReducedMotion() {
  return NSWorkspace.sharedWorkspace.accessibilityDisplayShouldReduceMotion != 0;
}

ModifierKeys MacSystemInfo::modifierKeys() {
  const NSEventModifierFlags held = NSEvent.modifierFlags;
  return {.shift = (held & NSEventModifierFlagShift) != 0,
          .control = (held & NSEventModifierFlagControl) != 0,
          .option = (held & NSEventModifierFlagOption) != 0,
          .command = (held & NSEventModifierFlagCommand) != 0};
}

}  // namespace kelvane
