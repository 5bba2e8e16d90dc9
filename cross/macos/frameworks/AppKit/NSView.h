// Views, tracking areas, view controllers.
#pragma once

#import <AppKit/NSAppearance.h>
#import <AppKit/NSLayout.h>

NS_ASSUME_NONNULL_BEGIN

@class NSGestureRecognizer;

typedef NSString* NSUserInterfaceItemIdentifier;

typedef NS_OPTIONS(NSUInteger, NSTrackingAreaOptions) {
  NSTrackingMouseEnteredAndExited = 0x01,
  NSTrackingActiveAlways = 0x80,
};

@interface NSTrackingArea : NSObject <NSCopying, NSCoding>
- (instancetype)initWithRect:(NSRect)rect
                     options:(NSTrackingAreaOptions)options
                       owner:(nullable id)owner
                    userInfo:(nullable NSDictionary<id, id>*)userInfo;
@end

@interface NSView : NSResponder <NSAppearanceCustomization, NSUserInterfaceItemIdentification>
@property NSRect frame;
@property NSRect bounds;
@property(getter=isHidden) BOOL hidden;
@property BOOL wantsLayer;
@property(nullable, strong) CALayer* layer;
@property(nullable, readonly, assign) NSWindow* window;
@property(nullable, readonly, assign) NSView* superview;
@property(copy) NSArray<__kindof NSView*>* subviews;
@property(nullable, copy) NSString* toolTip;
@property BOOL translatesAutoresizingMaskIntoConstraints;
@property(readonly) NSSize fittingSize;
@property(readonly, strong) NSLayoutXAxisAnchor* leadingAnchor;
@property(readonly, strong) NSLayoutXAxisAnchor* trailingAnchor;
@property(readonly, strong) NSLayoutXAxisAnchor* centerXAnchor;
@property(readonly, strong) NSLayoutYAxisAnchor* topAnchor;
@property(readonly, strong) NSLayoutYAxisAnchor* bottomAnchor;
@property(readonly, strong) NSLayoutYAxisAnchor* centerYAnchor;
@property(readonly, strong) NSLayoutDimension* widthAnchor;
@property(readonly, strong) NSLayoutDimension* heightAnchor;
- (instancetype)initWithFrame:(NSRect)frame;
- (void)addSubview:(NSView*)view;
- (void)removeFromSuperview;
- (void)viewDidMoveToSuperview;
- (nullable NSView*)hitTest:(NSPoint)point;
- (NSRect)convertRect:(NSRect)rect toView:(nullable NSView*)view;
- (void)addTrackingArea:(NSTrackingArea*)area;
- (void)removeTrackingArea:(NSTrackingArea*)area;
- (void)updateTrackingAreas NS_REQUIRES_SUPER;
- (void)layoutSubtreeIfNeeded;
@property BOOL needsDisplay;
@property(readonly) BOOL allowsVibrancy;
- (void)addGestureRecognizer:(NSGestureRecognizer*)recognizer;
- (void)removeGestureRecognizer:(NSGestureRecognizer*)recognizer;
- (void)drawRect:(NSRect)rect;
@end

@interface NSViewController : NSResponder <NSUserInterfaceItemIdentification>
@property(strong) NSView* view;
@property(nullable, copy) NSString* title;
@property NSSize preferredContentSize;
- (void)loadView;
@end

NS_ASSUME_NONNULL_END
