// The table of devices that the operating system keeps. Main thread. Calls in one turn of
// the run loop may share a reading; a later turn reads afresh.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/property_value.h"

namespace kelvane {

// A registry entry that is held open; 0 is none.
using ServiceHandle = std::uint32_t;

class DeviceRegistry {
 public:
  virtual ~DeviceRegistry() = default;

  // The first service of this name, or 0 when there is none. The battery is "AppleSmartBattery" on
  // every platform. The handle stays usable when the hardware goes away: reads then find nothing.
  virtual ServiceHandle findService(std::string_view name) = 0;

  // One property of a service; absent when the handle is 0 or the property is missing or
  // unreadable. Of the battery: "ExternalConnected" and "IsCharging" (boolean), "MaxCapacity" and
  // "DesignCapacity" (mAh, whole), "TimeRemaining" (minutes until full, 65535 while unknown,
  // whole).
  virtual std::optional<PropertyValue> property(ServiceHandle service, std::string_view name) = 0;

  // Gives a handle back; 0 is allowed and does nothing.
  virtual void release(ServiceHandle service) = 0;
};

}  // namespace kelvane
