// Buttons, texts, lines and the stacks they stand in.
#pragma once

#import <AppKit/NSText.h>
#import <AppKit/NSView.h>

NS_ASSUME_NONNULL_BEGIN

typedef NSInteger NSControlStateValue;
static const NSControlStateValue NSControlStateValueOff = 0;
static const NSControlStateValue NSControlStateValueOn = 1;

typedef NS_ENUM(NSUInteger, NSBezelStyle) { NSBezelStyleRounded = 1 };
typedef NS_ENUM(NSUInteger, NSCellImagePosition) {
  NSNoImage = 0,
  NSImageOnly = 1,
  NSImageLeft = 2,
};

@interface NSControl : NSView
@property(nullable, weak) id target;
@property(nullable) SEL action;
@property NSInteger tag;
@property(getter=isEnabled) BOOL enabled;
@property NSTextAlignment alignment;
@property(nullable, strong) NSFont* font;
@property(copy) NSString* stringValue;
@property(copy) NSAttributedString* attributedStringValue;
@end

@interface NSButton : NSControl
@property(copy) NSString* title;
@property(copy) NSAttributedString* attributedTitle;
@property(nullable, strong) NSImage* image;
@property NSCellImagePosition imagePosition;
@property NSControlStateValue state;
@property NSBezelStyle bezelStyle;
@property(copy) NSString* keyEquivalent;
+ (instancetype)buttonWithTitle:(NSString*)title
                         target:(nullable id)target
                         action:(nullable SEL)action;
+ (instancetype)checkboxWithTitle:(NSString*)title
                           target:(nullable id)target
                           action:(nullable SEL)action;
+ (instancetype)radioButtonWithTitle:(NSString*)title
                              target:(nullable id)target
                              action:(nullable SEL)action;
@end

@interface NSTextField : NSControl
@property(nullable, copy) NSColor* textColor;
@property CGFloat preferredMaxLayoutWidth;
@property(getter=isSelectable) BOOL selectable;
+ (instancetype)labelWithString:(NSString*)text;
+ (instancetype)wrappingLabelWithString:(NSString*)text;
@end

@interface NSImageView : NSControl
@property(nullable, strong) NSImage* image;
+ (instancetype)imageViewWithImage:(NSImage*)image;
@end

typedef NS_ENUM(NSUInteger, NSBoxType) { NSBoxPrimary = 0, NSBoxSeparator = 2, NSBoxCustom = 4 };

@interface NSBox : NSView
@property NSBoxType boxType;
@end

typedef NS_ENUM(NSInteger, NSUserInterfaceLayoutOrientation) {
  NSUserInterfaceLayoutOrientationHorizontal = 0,
  NSUserInterfaceLayoutOrientationVertical = 1,
};

typedef struct NSEdgeInsets {
  CGFloat top;
  CGFloat left;
  CGFloat bottom;
  CGFloat right;
} NSEdgeInsets;

typedef NS_ENUM(NSInteger, NSStackViewGravity) {
  NSStackViewGravityTop = 1,
  NSStackViewGravityLeading = 1,
  NSStackViewGravityCenter = 2,
};

@interface NSStackView : NSView
@property NSUserInterfaceLayoutOrientation orientation;
@property NSLayoutAttribute alignment;
@property CGFloat spacing;
@property NSEdgeInsets edgeInsets;
@property(readonly, copy) NSArray<__kindof NSView*>* arrangedSubviews;
- (void)addArrangedSubview:(NSView*)view;
- (void)insertArrangedSubview:(NSView*)view atIndex:(NSInteger)index;
- (void)removeArrangedSubview:(NSView*)view;
- (void)insertView:(NSView*)view atIndex:(NSUInteger)index inGravity:(NSStackViewGravity)gravity;
@end

NS_ASSUME_NONNULL_END
