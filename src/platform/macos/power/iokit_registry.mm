#include "platform/macos/power/iokit_registry.h"

#include <string>

#import <IOKit/IOKitLib.h>

#include "platform/macos/foundation/property_objects.h"
#include "platform/macos/foundation/strings.h"

namespace kelvane {

ServiceHandle IokitRegistry::findService(std::string_view name) {
  return IOServiceGetMatchingService(kIOMasterPortDefault,
                                     IOServiceNameMatching(std::string(name).c_str()));
}

std::optional<PropertyValue> IokitRegistry::property(ServiceHandle service, std::string_view name) {
  if (service == IO_OBJECT_NULL) return std::nullopt;
  @autoreleasepool {
    NSString* key = stringOf(name);
    if (!key) return std::nullopt;
    return propertyValueOf((__bridge_transfer id)IORegistryEntryCreateCFProperty(
        service, (__bridge CFStringRef)key, kCFAllocatorDefault, 0));
  }
}

void IokitRegistry::release(ServiceHandle service) {
  if (service != IO_OBJECT_NULL) IOObjectRelease(service);
}

}  // namespace kelvane
