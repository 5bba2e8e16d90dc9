// The battery's entry of the device registry, worked out of the kernel's power supplies. Pure
// functions, any thread.
#pragma once

#include <optional>
#include <string_view>
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

// What has to be read for a property, as far as the state of the supplies tells.
SupplyFields fieldsNeededFor(std::string_view property, const std::vector<Supply>& state);

// A property of the entry, by the names of `DeviceRegistry`; absent when it isn't known, without a
// battery and for other names. Capacities are summed over the batteries in mAh.
std::optional<PropertyValue> registryProperty(const std::vector<Supply>& supplies,
                                              std::string_view name);

// All that are known.
PropertyDictionary registryProperties(const std::vector<Supply>& supplies);

}  // namespace kelvane
