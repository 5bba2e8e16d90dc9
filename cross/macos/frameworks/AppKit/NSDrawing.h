// Colours, fonts, paths, pictures and the context they are drawn in.
#pragma once

#import <AppKit/NSAppearance.h>
#import <CoreGraphics/CoreGraphics.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_ENUM(NSUInteger, NSCompositingOperation) {
  NSCompositingOperationClear,
  NSCompositingOperationCopy,
  NSCompositingOperationSourceOver,
  NSCompositingOperationSourceIn,
  NSCompositingOperationSourceOut,
  NSCompositingOperationSourceAtop,
};

typedef NS_ENUM(NSUInteger, NSImageInterpolation) {
  NSImageInterpolationDefault = 0,
  NSImageInterpolationNone = 1,
  NSImageInterpolationLow = 2,
  NSImageInterpolationMedium = 4,
  NSImageInterpolationHigh = 3,
};

typedef NS_ENUM(NSUInteger, NSWindingRule) { NSWindingRuleNonZero = 0, NSWindingRuleEvenOdd = 1 };

FOUNDATION_EXPORT void NSRectFillUsingOperation(NSRect rect, NSCompositingOperation operation);

@interface NSColor : NSObject <NSCopying, NSSecureCoding>
@property(class, strong, readonly) NSColor* blackColor;
@property(class, strong, readonly) NSColor* labelColor;
@property(class, strong, readonly) NSColor* secondaryLabelColor;
@property(class, strong, readonly) NSColor* clearColor;
+ (NSColor*)colorWithSRGBRed:(CGFloat)red
                       green:(CGFloat)green
                        blue:(CGFloat)blue
                       alpha:(CGFloat)alpha;
- (void)set;
- (void)setFill;
@end

typedef CGFloat NSFontWeight;
FOUNDATION_EXPORT const NSFontWeight NSFontWeightRegular;
FOUNDATION_EXPORT const NSFontWeight NSFontWeightMedium;

@interface NSFont : NSObject <NSSecureCoding, NSCopying>
@property(class, readonly) CGFloat systemFontSize;
@property(class, readonly) CGFloat smallSystemFontSize;
@property(readonly) CGFloat ascender;
@property(readonly) CGFloat descender;
+ (NSFont*)systemFontOfSize:(CGFloat)size;
+ (NSFont*)systemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight;
+ (NSFont*)menuBarFontOfSize:(CGFloat)size;
@end

@interface NSGraphicsContext : NSObject
@property(class, nullable, strong) NSGraphicsContext* currentContext;
@property(readonly) CGContextRef CGContext NS_RETURNS_INNER_POINTER;
@property NSImageInterpolation imageInterpolation;
@property NSCompositingOperation compositingOperation;
- (void)saveGraphicsState;
- (void)restoreGraphicsState;
@end

@interface NSBezierPath : NSObject <NSCopying, NSSecureCoding>
@property NSWindingRule windingRule;
+ (NSBezierPath*)bezierPath;
+ (void)clipRect:(NSRect)rect;
- (void)moveToPoint:(NSPoint)point;
- (void)lineToPoint:(NSPoint)point;
- (void)curveToPoint:(NSPoint)end controlPoint1:(NSPoint)first controlPoint2:(NSPoint)second;
- (void)closePath;
- (void)fill;
@end

@interface NSImage : NSObject <NSCopying, NSSecureCoding>
@property NSSize size;
@property(nullable, copy) NSString* accessibilityDescription;
// No property: its name is a keyword of C++.
- (BOOL)isTemplate;
- (void)setTemplate:(BOOL)isTemplate;
+ (instancetype)imageWithSize:(NSSize)size
                      flipped:(BOOL)flipped
               drawingHandler:(BOOL (^)(NSRect rect))drawingHandler;
+ (nullable NSImage*)imageNamed:(NSString*)name;
+ (nullable instancetype)imageWithSystemSymbolName:(NSString*)name
                          accessibilityDescription:(nullable NSString*)description
    API_AVAILABLE(macos(11.0));
- (void)drawInRect:(NSRect)rect
          fromRect:(NSRect)source
         operation:(NSCompositingOperation)operation
          fraction:(CGFloat)delta;
@end

FOUNDATION_EXPORT NSString* const NSImageNamePreferencesGeneral;

NS_ASSUME_NONNULL_END
