// Events and who takes them.
#pragma once

#import <Foundation/Foundation.h>
#import <QuartzCore/QuartzCore.h>

NS_ASSUME_NONNULL_BEGIN

@class NSWindow, NSView, NSMenu, NSMenuItem, NSImage, NSColor, NSFont, NSButton, NSAppearance,
    NSScreen, NSGraphicsContext;

typedef NS_ENUM(NSUInteger, NSEventType) {
  NSEventTypeApplicationDefined = 15,
};

typedef NS_OPTIONS(unsigned long long, NSEventMask) {
  NSEventMaskLeftMouseDown = 1ULL << 1,
  NSEventMaskRightMouseDown = 1ULL << 3,
  NSEventMaskFlagsChanged = 1ULL << 12,
};

typedef NS_OPTIONS(NSUInteger, NSEventModifierFlags) {
  NSEventModifierFlagShift = 1 << 17,
  NSEventModifierFlagControl = 1 << 18,
  NSEventModifierFlagOption = 1 << 19,
  NSEventModifierFlagCommand = 1 << 20,
};

@interface NSEvent : NSObject <NSCopying, NSCoding>
@property(nullable, readonly, assign) NSWindow* window;
@property(class, readonly) NSEventModifierFlags modifierFlags;
+ (nullable NSEvent*)otherEventWithType:(NSEventType)type
                               location:(NSPoint)location
                          modifierFlags:(NSEventModifierFlags)flags
                              timestamp:(NSTimeInterval)time
                           windowNumber:(NSInteger)windowNumber
                                context:(nullable NSGraphicsContext*)context
                                subtype:(short)subtype
                                  data1:(NSInteger)data1
                                  data2:(NSInteger)data2;
+ (nullable id)addLocalMonitorForEventsMatchingMask:(NSEventMask)mask
                                            handler:(NSEvent* _Nullable (^)(NSEvent* event))block;
+ (void)removeMonitor:(id)monitor;
@end

@interface NSResponder : NSObject <NSCoding>
- (void)mouseEntered:(NSEvent*)event;
- (void)mouseExited:(NSEvent*)event;
- (void)mouseDown:(NSEvent*)event;
@end

@interface NSGestureRecognizer : NSObject <NSCoding>
- (instancetype)initWithTarget:(nullable id)target
                        action:(nullable SEL)action NS_DESIGNATED_INITIALIZER;
- (nullable instancetype)initWithCoder:(NSCoder*)coder NS_DESIGNATED_INITIALIZER;
@end

@interface NSClickGestureRecognizer : NSGestureRecognizer
@end

@protocol NSStandardKeyBindingResponding <NSObject>
@optional
- (void)cancelOperation:(nullable id)sender;
@end

@interface NSResponder (NSStandardKeyBindingMethods) <NSStandardKeyBindingResponding>
@end

@protocol NSUserInterfaceItemIdentification
@property(nullable, copy) NSString* identifier;
@end

@protocol NSMenuItemValidation <NSObject>
- (BOOL)validateMenuItem:(NSMenuItem*)item;
@end

NS_ASSUME_NONNULL_END
