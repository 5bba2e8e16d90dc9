// Power sources and the registry of devices.
#include <algorithm>

#import <IOKit/IOKitLib.h>
#import <IOKit/ps/IOPowerSources.h>

#include "foundation/run_loop.h"

const mach_port_t kIOMasterPortDefault = 0;

namespace kelvane::doubles {
namespace {

PerTest<Power> state;
PerTest<std::vector<KelvaneLoopSource*>> listeners;
constexpr io_service_t kBattery = 7;

}  // namespace

Power& power() { return *state; }

void powerChanged() {
  for (KelvaneLoopSource* each : *listeners)
    if (each->isValid_) ++each->messages_;
}

int powerListeners() {
  return static_cast<int>(std::count_if(listeners->begin(), listeners->end(),
                                        [](auto each) { return each->isValid_; }));
}

}  // namespace kelvane::doubles

using namespace kelvane::doubles;

// The blob is the dictionary itself, the list its keys.
extern "C" {
CFTypeRef IOPSCopyPowerSourcesInfo() { return (__bridge_retained CFTypeRef)[power().sources copy]; }
CFArrayRef IOPSCopyPowerSourcesList(CFTypeRef blob) {
  return (__bridge_retained CFArrayRef)[(__bridge NSDictionary*)blob allKeys];
}
CFDictionaryRef IOPSGetPowerSourceDescription(CFTypeRef blob, CFTypeRef source) {
  id description = ((__bridge NSDictionary*)blob)[(__bridge id)source];
  return [description isKindOfClass:NSDictionary.class] ? (__bridge CFDictionaryRef)description
                                                        : nullptr;
}
CFTimeInterval IOPSGetTimeRemainingEstimate() { return power().timeRemaining; }
IOPSLowBatteryWarningLevel IOPSGetBatteryWarningLevel() {
  return static_cast<IOPSLowBatteryWarningLevel>(power().warningLevel);
}
CFRunLoopSourceRef IOPSNotificationCreateRunLoopSource(IOPowerSourceCallbackType callback,
                                                       void* context) {
  KelvaneLoopSource* source = [[KelvaneLoopSource alloc] init];
  source->isValid_ = true;
  source->callback_ = callback;
  source->context_ = context;
  listeners->push_back(source);
  return (CFRunLoopSourceRef)CFRetain((__bridge CFTypeRef)source);
}

CFMutableDictionaryRef IOServiceNameMatching(const char* name) {
  NSString* text = [NSString stringWithUTF8String:name];
  return (CFMutableDictionaryRef)(__bridge_retained CFDictionaryRef)[@{@"name" : text} copy];
}
io_service_t IOServiceGetMatchingService(mach_port_t, CFDictionaryRef matching) {
  NSDictionary* wanted = (__bridge_transfer NSDictionary*)matching;
  if (!power().battery || ![wanted[@"name"] isEqual:@"AppleSmartBattery"]) return IO_OBJECT_NULL;
  ++power().servicesHeld;
  return kBattery;
}
CFTypeRef IORegistryEntryCreateCFProperty(io_registry_entry_t entry, CFStringRef key,
                                          CFAllocatorRef, IOOptionBits) {
  if (entry != kBattery) return nullptr;
  return (__bridge_retained CFTypeRef)power().battery[(__bridge NSString*)key];
}
kern_return_t IOObjectRelease(io_object_t object) {
  if (object == kBattery) --power().servicesHeld;
  return kIOReturnSuccess;
}
}
