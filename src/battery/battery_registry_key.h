// Names of the battery service's properties in the device registry. Plain values, any thread.
#pragma once

#include <string_view>

namespace kelvane {

enum class BatteryRegistryKey {
  designCapacity,
  maxCapacity,
  currentCapacity,  // declared, never read: the level comes from the power sources
  isCharging,
  externalConnected,
  timeRemaining,
  fullyCharged,  // declared, never read
};

constexpr std::string_view rawValue(BatteryRegistryKey key) {
  switch (key) {
    case BatteryRegistryKey::designCapacity:
      return "DesignCapacity";
    case BatteryRegistryKey::maxCapacity:
      return "MaxCapacity";
    case BatteryRegistryKey::currentCapacity:
      return "CurrentCapacity";
    case BatteryRegistryKey::isCharging:
      return "IsCharging";
    case BatteryRegistryKey::externalConnected:
      return "ExternalConnected";
    case BatteryRegistryKey::timeRemaining:
      return "TimeRemaining";
    case BatteryRegistryKey::fullyCharged:
      return "FullyCharged";
  }
  return "";
}

}  // namespace kelvane
