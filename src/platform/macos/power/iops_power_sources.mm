#include "platform/macos/power/iops_power_sources.h"

#include <utility>

#import <Foundation/Foundation.h>
#import <IOKit/ps/IOPowerSources.h>

#include "platform/macos/foundation/property_objects.h"
#include "platform/macos/run_loop/cf_run_loop_source.h"

namespace kelvane {
namespace {

using Callback = std::function<void()>;

void powerSourcesChanged(void* context) {
  // The callback may drop its own source.
  const Callback callback = *static_cast<const Callback*>(context);
  callback();
}

class NotificationSource : public CfRunLoopSource {
 public:
  explicit NotificationSource(std::unique_ptr<Callback> callback)
      : CfRunLoopSource(IOPSNotificationCreateRunLoopSource(powerSourcesChanged, callback.get())),
        callback_(std::move(callback)) {}
  ~NotificationSource() override {
    // Before the callback goes, whose address the system has.
    if (reference()) CFRunLoopSourceInvalidate(reference());
  }

 private:
  const std::unique_ptr<Callback> callback_;
};

}  // namespace

const std::vector<PropertyDictionary>& IopsPowerSources::descriptions() {
  descriptions_.clear();
  @autoreleasepool {
    // The descriptions are parts of the blob, which therefore may not go before the last is read.
    __attribute__((objc_precise_lifetime)) id blob =
        (__bridge_transfer id)IOPSCopyPowerSourcesInfo();
    if (!blob) return descriptions_;
    NSArray* sources =
        (__bridge_transfer NSArray*)IOPSCopyPowerSourcesList((__bridge CFTypeRef)blob);
    for (id source in sources) {
      CFDictionaryRef description =
          IOPSGetPowerSourceDescription((__bridge CFTypeRef)blob, (__bridge CFTypeRef)source);
      descriptions_.push_back(propertyDictionaryOf((__bridge NSDictionary*)description));
    }
  }
  return descriptions_;
}

double IopsPowerSources::timeRemainingEstimate() {
  static_assert(kIOPSTimeRemainingUnknown == kTimeRemainingUnknown);
  static_assert(kIOPSTimeRemainingUnlimited == kTimeRemainingUnlimited);
  return IOPSGetTimeRemainingEstimate();
}

BatteryWarningLevel IopsPowerSources::warningLevel() {
  switch (IOPSGetBatteryWarningLevel()) {
    case kIOPSLowBatteryWarningEarly:
      return BatteryWarningLevel::early;
    case kIOPSLowBatteryWarningFinal:
      return BatteryWarningLevel::final;
    default:
      return BatteryWarningLevel::none;
  }
}

std::shared_ptr<RunLoopSource> IopsPowerSources::makeNotificationSource(Callback callback) {
  return std::make_shared<NotificationSource>(std::make_unique<Callback>(std::move(callback)));
}

}  // namespace kelvane
