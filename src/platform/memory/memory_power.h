// The power of the in-memory computer: a registry entry and power sources that a script changes.
// Main thread.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/device_registry.h"
#include "platform/portable/run_loop_queue.h"
#include "platform/power_sources.h"

namespace kelvane {

class MemoryDeviceRegistry : public DeviceRegistry {
 public:
  ServiceHandle findService(std::string_view name) override;
  std::optional<PropertyValue> property(ServiceHandle service, std::string_view name) override;
  void release(ServiceHandle service) override { released.push_back(service); }

  static constexpr ServiceHandle kBattery = 7;
  bool hasBattery = true;
  PropertyDictionary properties;        // of the battery's service
  std::vector<ServiceHandle> released;  // every handle given back, 0 included
  int reads = 0;
};

class MemoryPowerSources : public PowerSources {
 public:
  const std::vector<PropertyDictionary>& descriptions() override { return sources; }
  double timeRemainingEstimate() override { return estimate; }
  BatteryWarningLevel warningLevel() override { return warning; }
  std::shared_ptr<RunLoopSource> makeNotificationSource(std::function<void()> callback) override;

  // Tells every source that is still held that something changed.
  void notify();

  std::vector<PropertyDictionary> sources;
  double estimate = kTimeRemainingUnknown;
  BatteryWarningLevel warning = BatteryWarningLevel::none;

 private:
  std::vector<std::weak_ptr<QueueSource>> notificationSources_;
};

// A computer with one battery, as a few figures; `apply` puts them into both readers.
struct MemoryBattery {
  int percent = 57;
  bool isOnPower = false;
  std::optional<bool> isCharging;           // absent: as `isOnPower`
  double estimate = kTimeRemainingUnknown;  // seconds; ignored on power
  int minutesUntilFull = 65535;
  int maxCapacity = 5000;  // mAh
  int designCapacity = 5600;
  std::string health = "Good";
  BatteryWarningLevel warning = BatteryWarningLevel::none;

  void apply(MemoryDeviceRegistry& registry, MemoryPowerSources& powerSources) const;
};

}  // namespace kelvane
