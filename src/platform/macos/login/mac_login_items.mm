#include "platform/macos/login/mac_login_items.h"

#import <ServiceManagement/ServiceManagement.h>

#include "platform/macos/foundation/property_objects.h"
#include "platform/macos/foundation/strings.h"

namespace kelvane {
namespace {

// Deprecated since macOS 10.10, and the only way there is to ask before macOS 13.
NSArray* copyJobs() {
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
  return (__bridge_transfer NSArray*)SMCopyAllJobDictionaries(kSMDomainUserLaunchd);
#pragma clang diagnostic pop
}

}  // namespace

std::optional<std::vector<PropertyDictionary>> MacLoginItems::jobs() {
  @autoreleasepool {
    NSArray* list = copyJobs();
    if (!list) return std::nullopt;
    std::vector<PropertyDictionary> jobs;
    jobs.reserve(list.count);
    for (id job in list)
      if ([job isKindOfClass:[NSDictionary class]]) jobs.push_back(propertyDictionaryOf(job));
    return jobs;
  }
}

bool MacLoginItems::setEnabled(const std::string& label, bool enabled) {
  @autoreleasepool {
    NSString* identifier = stringOf(label);
    return identifier && SMLoginItemSetEnabled((__bridge CFStringRef)identifier, enabled) != 0;
  }
}

}  // namespace kelvane
