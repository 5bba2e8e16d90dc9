// Colours, fonts, pictures, appearances and animations: kept, never drawn.
#include "doubles.h"

NSAttributedStringKey const NSFontAttributeName = @"font";
NSAttributedStringKey const NSForegroundColorAttributeName = @"colour";
NSAttributedStringKey const NSKernAttributeName = @"kern";
NSAttributedStringKey const NSParagraphStyleAttributeName = @"paragraph";
const NSFontWeight NSFontWeightRegular = 0;
const NSFontWeight NSFontWeightMedium = 0.23;
NSAppearanceName const NSAppearanceNameAqua = @"aqua";
NSAppearanceName const NSAppearanceNameDarkAqua = @"dark aqua";
NSAppearanceName const NSAppearanceNameVibrantLight = @"vibrant light";
NSAppearanceName const NSAppearanceNameVibrantDark = @"vibrant dark";

@interface NSAppearance ()
@property(readwrite, copy) NSAppearanceName name;
@end

@implementation NSAppearance
@dynamic currentAppearance;
+ (NSAppearance*)appearanceNamed:(NSAppearanceName)name {
  NSAppearance* appearance = [[NSAppearance alloc] init];
  appearance.name = name;
  return appearance;
}
// One of high contrast is named like its ordinary one, with more behind.
- (NSAppearanceName)bestMatchFromAppearancesWithNames:(NSArray<NSAppearanceName>*)names {
  for (NSAppearanceName each in names)
    if ([self.name hasPrefix:each]) return each;
  return nil;
}
@end

@implementation NSColor
+ (NSColor*)colorWithSRGBRed:(CGFloat)red
                       green:(CGFloat)green
                        blue:(CGFloat)blue
                       alpha:(CGFloat)alpha {
  NSColor* color = [[NSColor alloc] init];
  color.kelvaneParts = @[ @(red), @(green), @(blue), @(alpha) ];
  return color;
}
@end

@implementation NSFont
+ (NSFont*)systemFontOfSize:(CGFloat)size weight:(NSFontWeight)weight {
  NSFont* font = [[NSFont alloc] init];
  font.kelvaneSize = size;
  font.kelvaneWeight = weight;
  return font;
}
@end

@implementation NSParagraphStyle
@end

@implementation NSMutableParagraphStyle
@end

@implementation NSGraphicsContext
+ (NSGraphicsContext*)currentContext {
  return nil;
}
@end

@implementation NSBezierPath
@end

@interface NSImage () {
  BOOL isTemplate_;
}
@end

@implementation NSImage
+ (instancetype)imageWithSize:(NSSize)size
                      flipped:(BOOL)flipped
               drawingHandler:(BOOL (^)(NSRect))drawingHandler {
  (void)flipped;
  NSImage* image = [[NSImage alloc] init];
  image.size = size;
  image.kelvaneDrawing = drawingHandler;
  return image;
}
+ (instancetype)imageWithSystemSymbolName:(NSString*)name
                 accessibilityDescription:(NSString*)description {
  NSImage* image = [[NSImage alloc] init];
  image.accessibilityDescription = [name stringByAppendingString:description];
  return image;
}
- (BOOL)isTemplate {
  return isTemplate_;
}
- (void)setTemplate:(BOOL)isTemplate {
  isTemplate_ = isTemplate;
}
@end

extern "C" {
void CGContextBeginTransparencyLayer(CGContextRef, CFDictionaryRef) {}
void CGContextEndTransparencyLayer(CGContextRef) {}
CGSize CGContextConvertSizeToDeviceSpace(CGContextRef, CGSize size) { return size; }
void NSRectFillUsingOperation(NSRect, NSCompositingOperation) {}
}

@implementation CAAnimation
@synthesize duration = duration_;
@end

@implementation CAPropertyAnimation
+ (instancetype)animationWithKeyPath:(NSString*)path {
  CAPropertyAnimation* animation = [[self alloc] init];
  animation.kelvanePath = path;
  return animation;
}
@end

@implementation CAKeyframeAnimation
@end

@implementation CALayer
@synthesize duration = duration_;
- (void)addAnimation:(CAAnimation*)animation forKey:(NSString*)key {
  if (!self.kelvaneAnimations) self.kelvaneAnimations = [NSMutableDictionary dictionary];
  self.kelvaneAnimations[key] = animation;
}
@end
