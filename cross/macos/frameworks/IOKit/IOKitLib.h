// The registry of devices.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
#include <mach/mach_types.h>

CF_ASSUME_NONNULL_BEGIN

typedef int kern_return_t;
typedef kern_return_t IOReturn;
typedef UInt32 IOOptionBits;
typedef mach_port_t io_object_t;
typedef io_object_t io_registry_entry_t;
typedef io_object_t io_service_t;

#define IO_OBJECT_NULL ((io_object_t)0)
#define kIOReturnSuccess ((IOReturn)0)

CF_EXPORT const mach_port_t kIOMasterPortDefault
    API_DEPRECATED_WITH_REPLACEMENT("kIOMainPortDefault", macos(10.0, 12.0));
CF_EXPORT const mach_port_t kIOMainPortDefault API_AVAILABLE(macos(12.0));

CF_EXPORT CFMutableDictionaryRef _Nullable IOServiceNameMatching(const char* name)
    CF_RETURNS_RETAINED;
// Takes over the dictionary.
CF_EXPORT io_service_t IOServiceGetMatchingService(mach_port_t mainPort,
                                                   _Nullable CFDictionaryRef matching CF_CONSUMED);
CF_EXPORT CFTypeRef _Nullable IORegistryEntryCreateCFProperty(
    io_registry_entry_t entry, CFStringRef key, _Nullable CFAllocatorRef allocator,
    IOOptionBits options) CF_RETURNS_RETAINED;
CF_EXPORT kern_return_t IOObjectRelease(io_object_t object);

CF_ASSUME_NONNULL_END
