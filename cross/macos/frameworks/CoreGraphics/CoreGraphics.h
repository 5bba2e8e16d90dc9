// The context under AppKit's.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

CF_ASSUME_NONNULL_BEGIN

typedef struct CGContext* CGContextRef;

CF_EXPORT CGSize CGContextConvertSizeToDeviceSpace(CGContextRef context, CGSize size);
CF_EXPORT void CGContextBeginTransparencyLayer(CGContextRef context,
                                               CFDictionaryRef _Nullable auxiliary);
CF_EXPORT void CGContextEndTransparencyLayer(CGContextRef context);

CF_ASSUME_NONNULL_END
