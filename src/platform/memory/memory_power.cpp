#include "platform/memory/memory_power.h"

#include <utility>

namespace kelvane {

ServiceHandle MemoryDeviceRegistry::findService(std::string_view name) {
  return hasBattery && name == "AppleSmartBattery" ? kBattery : 0;
}

std::optional<PropertyValue> MemoryDeviceRegistry::property(ServiceHandle service,
                                                            std::string_view name) {
  ++reads;
  if (service != kBattery) return std::nullopt;
  const auto found = properties.find(std::string(name));
  if (found == properties.end()) return std::nullopt;
  return found->second;
}

std::shared_ptr<RunLoopSource> MemoryPowerSources::makeNotificationSource(
    std::function<void()> callback) {
  auto source = std::make_shared<QueueSource>(std::move(callback));
  notificationSources_.push_back(source);
  return source;
}

void MemoryPowerSources::notify() {
  std::erase_if(notificationSources_, [](const auto& source) { return source.expired(); });
  for (const auto& weak : notificationSources_)
    if (const auto source = weak.lock()) source->signal();
}

void MemoryBattery::apply(MemoryDeviceRegistry& registry, MemoryPowerSources& powerSources) const {
  registry.properties = {
      {"ExternalConnected", isOnPower},
      {"IsCharging", isCharging.value_or(isOnPower)},
      {"MaxCapacity", maxCapacity},
      {"DesignCapacity", designCapacity},
      {"TimeRemaining", isOnPower ? minutesUntilFull : 0},
  };
  powerSources.sources = {{{"Type", "InternalBattery"},
                           {"Is Present", true},
                           {"Current Capacity", percent},
                           {"Max Capacity", 100},
                           {"BatteryHealth", health}}};
  powerSources.estimate = isOnPower ? kTimeRemainingUnlimited : estimate;
  powerSources.warning = warning;
}

}  // namespace kelvane
