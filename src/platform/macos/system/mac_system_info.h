// Facts about this Mac, from Foundation, AppKit and the kernel. Main thread; read afresh.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/system_info.h"

namespace kelvane {

SystemVersion systemVersion();

class MacSystemInfo : public SystemInfo {
 public:
  std::optional<SystemVersion> macOSVersion() override;
  std::string systemDescription() override;
  // False before macOS 12, which Macs have it since.
  bool isLowPowerModeEnabled() override;
  std::optional<std::string> hardwareModel() override;
  std::optional<std::string> architecture() override;
  std::string localeIdentifier() override;
  // The language's code when it has no English name.
  std::string languageNameInEnglish() override;
  // What the system holds against the process, as its own activity monitor shows it.
  std::optional<std::uint64_t> memoryFootprint() override;
  int screenCount() override;
  double primaryScreenScale() override;
  bool prefersReducedMotion() override;
  ModifierKeys modifierKeys() override;
};

}  // namespace kelvane
