#include "battery/has_battery.h"

#include <algorithm>
#include <vector>

#include "platform/power_sources.h"

namespace kelvane {

bool hasBattery(PowerSources& powerSources) {
  const std::vector<PropertyDictionary>& sources = powerSources.descriptions();
  return std::ranges::any_of(sources, [](const PropertyDictionary& source) {
    const auto type = source.find("Type");
    const auto isPresent = source.find("Is Present");
    return type != source.end() && type->second == PropertyValue("InternalBattery") &&
           isPresent != source.end() && isPresent->second == PropertyValue(true);
  });
}

}  // namespace kelvane
