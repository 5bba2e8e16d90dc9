// What the application reads of the power sources, worked out of UPower's word or, without it, of
// the kernel's supplies. Pure functions, any thread.
#pragma once

#include <vector>

#include "platform/linux/power/sysfs_supply.h"
#include "platform/linux/power/upower_snapshot.h"
#include "platform/power_sources.h"
#include "platform/property_value.h"

namespace kelvane {

// The three readings of `PowerSources`.
struct PowerReadings {
  std::vector<PropertyDictionary> descriptions;
  double timeRemainingEstimate = kTimeRemainingUnlimited;
  BatteryWarningLevel warningLevel = BatteryWarningLevel::none;

  bool operator==(const PowerReadings&) const = default;
};

// `upower` is null while UPower is not there or has not answered yet: then the supplies alone
// serve. With it they say only whether the adapter is connected, so that a reading of the sources
// and one of the registry agree on that.
PowerReadings powerReadings(const std::vector<Supply>& supplies, const UPowerSnapshot* upower);

}  // namespace kelvane
