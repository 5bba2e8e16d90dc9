// The run loop below NSRunLoop: sources, modes.
#pragma once

#include <CoreFoundation/CFBase.h>

CF_ASSUME_NONNULL_BEGIN

typedef struct __CFRunLoop* CFRunLoopRef;
typedef struct __CFRunLoopSource* CFRunLoopSourceRef;
typedef CFStringRef CFRunLoopMode;

CF_EXPORT const CFRunLoopMode kCFRunLoopDefaultMode;
CF_EXPORT const CFRunLoopMode kCFRunLoopCommonModes;

CF_EXPORT CFRunLoopRef CFRunLoopGetCurrent(void);
CF_EXPORT CFRunLoopRef CFRunLoopGetMain(void);
CF_EXPORT void CFRunLoopWakeUp(CFRunLoopRef loop);
CF_EXPORT void CFRunLoopStop(CFRunLoopRef loop);
CF_EXPORT Boolean CFRunLoopContainsSource(CFRunLoopRef loop,
                                          CFRunLoopSourceRef _Null_unspecified source,
                                          _Null_unspecified CFRunLoopMode mode);
CF_EXPORT void CFRunLoopAddSource(CFRunLoopRef loop, CFRunLoopSourceRef _Null_unspecified source,
                                  _Null_unspecified CFRunLoopMode mode);
CF_EXPORT void CFRunLoopRemoveSource(CFRunLoopRef loop, CFRunLoopSourceRef _Null_unspecified source,
                                     _Null_unspecified CFRunLoopMode mode);
CF_EXPORT void CFRunLoopSourceInvalidate(CFRunLoopSourceRef source);
CF_EXPORT void CFRunLoopPerformBlock(CFRunLoopRef loop, _Null_unspecified CFTypeRef mode,
                                     void (^_Null_unspecified block)(void));

CF_ASSUME_NONNULL_END
