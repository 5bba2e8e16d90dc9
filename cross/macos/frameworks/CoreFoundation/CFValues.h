// The values of property lists, as Core Foundation sees them.
#pragma once

#include <CoreFoundation/CFBase.h>

CF_ASSUME_NONNULL_BEGIN

#define CFSTR(text) ((CFStringRef)__builtin___CFStringMakeConstantString("" text ""))

typedef UInt32 CFStringEncoding;
enum : CFStringEncoding { kCFStringEncodingUTF8 = 0x08000100 };

typedef CF_ENUM(CFIndex, CFNumberType) {
  kCFNumberSInt32Type = 3,
  kCFNumberSInt64Type = 4,
  kCFNumberIntType = 9,
  kCFNumberDoubleType = 13,
};

CF_EXPORT CFTypeID CFStringGetTypeID(void);
CF_EXPORT CFTypeID CFNumberGetTypeID(void);
CF_EXPORT CFTypeID CFBooleanGetTypeID(void);
CF_EXPORT CFTypeID CFArrayGetTypeID(void);
CF_EXPORT CFTypeID CFDictionaryGetTypeID(void);
CF_EXPORT CFTypeID CFDataGetTypeID(void);
CF_EXPORT CFTypeID CFDateGetTypeID(void);

CF_EXPORT _Nullable CFStringRef CFStringCreateWithBytes(
    _Nullable CFAllocatorRef alloc, const UInt8* _Nullable bytes, CFIndex numBytes,
    CFStringEncoding encoding, Boolean isExternalRepresentation) CF_RETURNS_RETAINED;
CF_EXPORT CFIndex CFStringGetLength(CFStringRef string);
CF_EXPORT CFIndex CFStringGetMaximumSizeForEncoding(CFIndex length, CFStringEncoding encoding);
CF_EXPORT Boolean CFStringGetCString(CFStringRef string, char* _Nullable buffer, CFIndex bufferSize,
                                     CFStringEncoding encoding);

CF_EXPORT Boolean CFBooleanGetValue(CFBooleanRef boolean);
CF_EXPORT Boolean CFNumberIsFloatType(CFNumberRef number);
CF_EXPORT Boolean CFNumberGetValue(CFNumberRef number, CFNumberType type, void* _Nullable value);

CF_EXPORT CFIndex CFArrayGetCount(CFArrayRef array);
CF_EXPORT const void* _Nullable CFArrayGetValueAtIndex(CFArrayRef array, CFIndex index);
CF_EXPORT CFIndex CFDictionaryGetCount(CFDictionaryRef dictionary);
CF_EXPORT const void* _Nullable CFDictionaryGetValue(CFDictionaryRef dictionary,
                                                     const void* _Nullable key);

CF_ASSUME_NONNULL_END
