// Facts about the computer, its system and this process. Main thread; every call reads afresh.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace kelvane {

struct SystemVersion {
  int major = 0;
  int minor = 0;
  int patch = 0;
  auto operator<=>(const SystemVersion&) const = default;
};

struct ModifierKeys {
  bool shift = false;
  bool control = false;
  bool option = false;
  bool command = false;
  bool operator==(const ModifierKeys&) const = default;
};

class SystemInfo {
 public:
  virtual ~SystemInfo() = default;

  virtual std::optional<SystemVersion> macOSVersion() = 0;  // absent on other systems
  // The system as its vendor names it, with its version ("macOS 11.7", "Debian GNU/Linux 12").
  virtual std::string systemDescription() = 0;
  virtual bool isLowPowerModeEnabled() = 0;  // false when it can't be known

  virtual std::optional<std::string> hardwareModel() = 0;
  virtual std::optional<std::string> architecture() = 0;       // the machine field of uname
  virtual std::string localeIdentifier() = 0;                  // "en_US"
  virtual std::string languageNameInEnglish() = 0;             // "English"
  virtual std::optional<std::uint64_t> memoryFootprint() = 0;  // bytes of this process

  virtual int screenCount() = 0;            // 0 when it can't be known
  virtual double primaryScreenScale() = 0;  // pixels per point; 1 when it can't be known
  virtual bool prefersReducedMotion() = 0;
  virtual ModifierKeys modifierKeys() = 0;  // those held now
};

}  // namespace kelvane
