#include "platform/linux/power/sysfs_device_registry.h"

#include <utility>

#include "platform/linux/power/registry_rules.h"

namespace kelvane {
namespace {

// There is one entry, whatever hardware is behind it at the time.
constexpr ServiceHandle kBattery = 1;

}  // namespace

SysfsDeviceRegistry::SysfsDeviceRegistry(std::string directory)
    : SysfsDeviceRegistry(std::make_shared<TurnSupplies>(std::move(directory))) {}

SysfsDeviceRegistry::SysfsDeviceRegistry(std::shared_ptr<TurnSupplies> supplies)
    : supplies_(std::move(supplies)) {}

ServiceHandle SysfsDeviceRegistry::findService(std::string_view name) {
  if (name != "AppleSmartBattery") return 0;
  return hasBattery(supplies_->read(SupplyFields::state)) ? kBattery : 0;
}

std::optional<PropertyValue> SysfsDeviceRegistry::property(ServiceHandle service,
                                                           std::string_view name) {
  if (service != kBattery) return std::nullopt;
  const SupplyFields fields = fieldsNeededFor(name, supplies_->read(SupplyFields::state));
  return registryProperty(supplies_->read(fields), name);
}

void SysfsDeviceRegistry::release(ServiceHandle) {}

}  // namespace kelvane
