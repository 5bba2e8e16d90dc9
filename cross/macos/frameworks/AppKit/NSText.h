// Looks of attributed strings; measuring and drawing them.
#pragma once

#import <AppKit/NSDrawing.h>

NS_ASSUME_NONNULL_BEGIN

@class NSStringDrawingContext;

FOUNDATION_EXPORT NSAttributedStringKey const NSFontAttributeName;
FOUNDATION_EXPORT NSAttributedStringKey const NSForegroundColorAttributeName;
FOUNDATION_EXPORT NSAttributedStringKey const NSKernAttributeName;
FOUNDATION_EXPORT NSAttributedStringKey const NSParagraphStyleAttributeName;

// Right and centre change places between the two processors.
typedef NS_ENUM(NSInteger, NSTextAlignment) {
  NSTextAlignmentLeft = 0,
#if defined(__arm64__)
  NSTextAlignmentCenter = 1,
  NSTextAlignmentRight = 2,
#else
  NSTextAlignmentRight = 1,
  NSTextAlignmentCenter = 2,
#endif
};

typedef NS_ENUM(NSUInteger, NSLineBreakMode) {
  NSLineBreakByWordWrapping = 0,
  NSLineBreakByCharWrapping,
  NSLineBreakByClipping,
};

typedef NS_OPTIONS(NSInteger, NSStringDrawingOptions) {
  NSStringDrawingUsesLineFragmentOrigin = 1 << 0,
  NSStringDrawingUsesFontLeading = 1 << 1,
  NSStringDrawingUsesDeviceMetrics = 1 << 3,
};

@interface NSParagraphStyle : NSObject <NSCopying, NSMutableCopying, NSSecureCoding>
@property(class, readonly, copy) NSParagraphStyle* defaultParagraphStyle;
@end

@interface NSMutableParagraphStyle : NSParagraphStyle
@property NSTextAlignment alignment;
@property NSLineBreakMode lineBreakMode;
@end

@interface NSString (NSExtendedStringDrawing)
- (void)drawWithRect:(NSRect)rect
             options:(NSStringDrawingOptions)options
          attributes:(nullable NSDictionary<NSAttributedStringKey, id>*)attributes
             context:(nullable NSStringDrawingContext*)context;
- (NSRect)boundingRectWithSize:(NSSize)size
                       options:(NSStringDrawingOptions)options
                    attributes:(nullable NSDictionary<NSAttributedStringKey, id>*)attributes
                       context:(nullable NSStringDrawingContext*)context;
@end

@interface NSAttributedString (NSExtendedStringDrawing)
- (void)drawWithRect:(NSRect)rect
             options:(NSStringDrawingOptions)options
             context:(nullable NSStringDrawingContext*)context;
- (NSRect)boundingRectWithSize:(NSSize)size
                       options:(NSStringDrawingOptions)options
                       context:(nullable NSStringDrawingContext*)context;
@end

NS_ASSUME_NONNULL_END
