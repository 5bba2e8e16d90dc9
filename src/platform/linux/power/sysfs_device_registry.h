// The device registry on Linux: the battery's entry, read from a tree of power supplies once
// for all properties asked for in a turn of the main loop. Main thread.
#pragma once

#include <memory>
#include <string>

#include "platform/device_registry.h"
#include "platform/linux/power/turn_supplies.h"

namespace kelvane {

class SysfsDeviceRegistry : public DeviceRegistry {
 public:
  // The folder in place of /sys/class/power_supply; it need not exist.
  explicit SysfsDeviceRegistry(std::string directory);
  // Shares the readings of somebody else.
  explicit SysfsDeviceRegistry(std::shared_ptr<TurnSupplies> supplies);

  ServiceHandle findService(std::string_view name) override;
  std::optional<PropertyValue> property(ServiceHandle service, std::string_view name) override;
  void release(ServiceHandle service) override;

 private:
  std::shared_ptr<TurnSupplies> supplies_;
};

}  // namespace kelvane
