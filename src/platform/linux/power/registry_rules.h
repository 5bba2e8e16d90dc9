// The battery's entry of the device registry, worked out of the kernel's power supplies. Pure
// functions, any thread.
#pragma once

#include <optional>
#include <vector>

#include "platform/linux/power/sysfs_supply.h"
#include "platform/property_value.h"

namespace kelvane {

// Whether the computer hangs on external power. The external supplies decide; without any whose
// state is readable, the batteries' status does; absent when that says nothing either.
std::optional<bool> externalConnected(const std::vector<Supply>& supplies);

// Whether there is a battery of the computer, in its bay or not.
bool hasBattery(const std::vector<Supply>& supplies);

// A battery's energy when full in µWh, converted from its charge where the kernel counts that.
std::optional<double> energyWhenFull(const Supply& battery);

// All properties of the entry that are known, by the names of `DeviceRegistry`; empty without a
// battery. Capacities are summed over the batteries in mAh.
PropertyDictionary registryProperties(const std::vector<Supply>& supplies);

}  // namespace kelvane
