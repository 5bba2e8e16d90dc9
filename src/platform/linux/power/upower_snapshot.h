// What UPower told us, as plain values. Names, units and enumerations are those of UPower's D-Bus
// interface org.freedesktop.UPower.Device; a property that is missing, of another type or out of
// its range is absent. Any thread.
#pragma once

#include <optional>
#include <vector>

namespace kelvane {

enum class UPowerType { linePower = 1, battery = 2, ups = 3, other = 4 };
enum class UPowerState {
  charging = 1,
  discharging = 2,
  empty = 3,
  fullyCharged = 4,
  pendingCharge = 5,
  pendingDischarge = 6
};
enum class UPowerWarning { none = 1, discharging = 2, low = 3, critical = 4, action = 5 };

struct UPowerDevice {
  std::optional<UPowerType> type;
  std::optional<UPowerState> state;
  std::optional<UPowerWarning> warning;
  std::optional<bool> isPowerSupply;  // feeds the computer; false for peripherals
  std::optional<bool> isPresent;
  std::optional<bool> isOnline;          // line power only
  std::optional<double> percentage;      // 0 to 100
  std::optional<double> energy;          // Wh, 0 or more
  std::optional<double> energyFull;      // Wh, above 0
  std::optional<double> energyDesign;    // Wh, above 0
  std::optional<double> secondsToEmpty;  // above 0: UPower's 0 means unknown
  std::optional<double> secondsToFull;   // above 0

  bool operator==(const UPowerDevice&) const = default;

  bool isSupply(UPowerType kind) const {
    return type == kind && isPowerSupply.value_or(true) && isPresent.value_or(true);
  }
};

struct UPowerSnapshot {
  UPowerDevice display;               // the composite; all absent when UPower has none
  std::vector<UPowerDevice> devices;  // without the composite, ordered by object path

  bool operator==(const UPowerSnapshot&) const = default;
};

}  // namespace kelvane
