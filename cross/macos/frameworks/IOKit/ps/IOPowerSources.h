// Power sources: their list, descriptions and changes.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

CF_ASSUME_NONNULL_BEGIN

#define kIOPSTimeRemainingUnknown ((CFTimeInterval)-1.0)
#define kIOPSTimeRemainingUnlimited ((CFTimeInterval)-2.0)

typedef CF_ENUM(int, IOPSLowBatteryWarningLevel) {
  kIOPSLowBatteryWarningNone = 1,
  kIOPSLowBatteryWarningEarly = 2,
  kIOPSLowBatteryWarningFinal = 3,
};

typedef void (*IOPowerSourceCallbackType)(void* _Nullable context);

CF_EXPORT CFTypeRef _Nullable IOPSCopyPowerSourcesInfo(void) CF_RETURNS_RETAINED;
CF_EXPORT CFArrayRef _Nullable IOPSCopyPowerSourcesList(CFTypeRef blob) CF_RETURNS_RETAINED;
// Belongs to the blob.
CF_EXPORT CFDictionaryRef _Nullable IOPSGetPowerSourceDescription(CFTypeRef blob, CFTypeRef source);
CF_EXPORT CFTimeInterval IOPSGetTimeRemainingEstimate(void);
CF_EXPORT IOPSLowBatteryWarningLevel IOPSGetBatteryWarningLevel(void);
CF_EXPORT CFRunLoopSourceRef _Nullable IOPSNotificationCreateRunLoopSource(
    IOPowerSourceCallbackType callback, void* _Nullable context) CF_RETURNS_RETAINED;

CF_ASSUME_NONNULL_END
