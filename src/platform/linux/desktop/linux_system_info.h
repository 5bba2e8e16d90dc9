// Facts about this Linux computer. Main thread. Files are read afresh for each question, with a
// bound on their size; what the bus knows (the power profile) is mirrored by signals, so that no
// question waits for another process.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/linux/desktop/power_profile_mirror.h"
#include "platform/system_info.h"

namespace kelvane {

class LinuxSystemInfo : public SystemInfo {
 public:
  // `root` is put before every path that is read ("/etc/os-release", "/sys/class/drm" ...).
  explicit LinuxSystemInfo(std::string root = "");
  ~LinuxSystemInfo() override;

  std::optional<SystemVersion> macOSVersion() override;
  // PRETTY_NAME of os-release(5), else NAME, else "Linux".
  std::string systemDescription() override;
  // The "power-saver" profile is active. The first question starts the mirror and is answered
  // false; `setLowPowerModeObserver` tells when the answer has become another.
  bool isLowPowerModeEnabled() override;
  void setLowPowerModeObserver(std::function<void()> changed);

  // The product name of DMI, or the device tree's model where there is no DMI.
  std::optional<std::string> hardwareModel() override;
  std::optional<std::string> architecture() override;
  // From LC_ALL, LC_MESSAGES and LANG, by locale(7)'s order; "en_US" for "C", "POSIX" and none.
  std::string localeIdentifier() override;
  // The language's English name, or its code where the table of common ones lacks it.
  std::string languageNameInEnglish() override;
  // The proportional share of memory (Pss), where the kernel gives it, else the resident size.
  std::optional<std::uint64_t> memoryFootprint() override;

  // Connected outputs of all graphics cards.
  int screenCount() override;
  // 1: the kernel doesn't know the scale; the status bar has its own, from the desktop's setting.
  double primaryScreenScale() override;
  // What `setReducedMotionSource` was given answers; false without.
  bool prefersReducedMotion() override { return isMotionReduced_ && isMotionReduced_(); }
  void setReducedMotionSource(std::function<bool()> isMotionReduced) {
    isMotionReduced_ = std::move(isMotionReduced);
  }
  // None held: nothing tells a program without a window what is pressed.
  ModifierKeys modifierKeys() override;

 private:
  std::string root_;
  std::function<void()> lowPowerModeChanged_;
  std::function<bool()> isMotionReduced_;
  std::unique_ptr<PowerProfileMirror> profile_;  // from the first question on
};

// The parsing of foreign text, apart from reading it.
// The value of a key in an os-release file, unquoted as os-release(5) says; absent when empty.
std::optional<std::string> osReleaseValue(std::string_view text, std::string_view key);
// "de_DE.UTF-8@euro" is "de_DE"; absent for "C", "POSIX", and what is no locale's name.
std::optional<std::string> localeFromEnvironmentValue(std::string_view value);
// The bytes of a "Pss:" line of smaps_rollup.
std::optional<std::uint64_t> proportionalBytes(std::string_view smapsRollup);

}  // namespace kelvane
