// The registry of devices that the kernel keeps. Main thread; every call reads afresh.
#pragma once

#include <optional>
#include <string_view>

#include "platform/device_registry.h"

namespace kelvane {

class IokitRegistry : public DeviceRegistry {
 public:
  ServiceHandle findService(std::string_view name) override;
  std::optional<PropertyValue> property(ServiceHandle service, std::string_view name) override;
  void release(ServiceHandle service) override;
};

}  // namespace kelvane
