// Windows, screens, alerts, popovers, tabs.
#pragma once

#import <AppKit/NSApplication.h>
#import <AppKit/NSControls.h>

NS_ASSUME_NONNULL_BEGIN

typedef NS_OPTIONS(NSUInteger, NSWindowStyleMask) {
  NSWindowStyleMaskBorderless = 0,
  NSWindowStyleMaskTitled = 1 << 0,
  NSWindowStyleMaskClosable = 1 << 1,
  NSWindowStyleMaskMiniaturizable = 1 << 2,
  NSWindowStyleMaskResizable = 1 << 3,
};

typedef NS_OPTIONS(NSUInteger, NSWindowCollectionBehavior) {
  NSWindowCollectionBehaviorStationary = 1 << 4,
  NSWindowCollectionBehaviorIgnoresCycle = 1 << 6,
};

typedef NS_ENUM(NSInteger, NSWindowToolbarStyle) {
  NSWindowToolbarStyleAutomatic,
  NSWindowToolbarStyleExpanded,
  NSWindowToolbarStylePreference,
} API_AVAILABLE(macos(11.0));

typedef NSInteger NSWindowLevel;
static const NSWindowLevel NSStatusWindowLevel = 25;

typedef NS_ENUM(NSUInteger, NSBackingStoreType) { NSBackingStoreBuffered = 2 };
typedef NS_ENUM(NSUInteger, NSRectEdge) {
  NSRectEdgeMinX = 0,
  NSRectEdgeMinY = 1,
  NSRectEdgeMaxX = 2,
  NSRectEdgeMaxY = 3,
};

@interface NSScreen : NSObject
@property(class, readonly, copy) NSArray<NSScreen*>* screens;
@property(class, readonly, nullable, strong) NSScreen* mainScreen;
@property(readonly) NSRect frame;
@property(readonly) CGFloat backingScaleFactor;
@end

FOUNDATION_EXPORT NSNotificationName const NSWindowDidChangeBackingPropertiesNotification;
FOUNDATION_EXPORT NSNotificationName const NSWindowDidMoveNotification;
FOUNDATION_EXPORT NSNotificationName const NSWindowDidResizeNotification;

@protocol NSWindowDelegate <NSObject>
@optional
- (void)windowWillClose:(NSNotification*)notification;
@end

@interface NSWindow : NSResponder <NSAppearanceCustomization, NSUserInterfaceItemIdentification>
@property(copy) NSString* title;
@property(nullable, strong) NSView* contentView;
@property(nullable, strong) NSViewController* contentViewController;
@property(nullable, weak) id<NSWindowDelegate> delegate;
@property(getter=isReleasedWhenClosed) BOOL releasedWhenClosed;
@property(readonly, getter=isVisible) BOOL visible;
@property(readonly) CGFloat backingScaleFactor;
@property(nullable, readonly, strong) NSScreen* screen;
@property(readonly) NSRect frame;
@property NSWindowStyleMask styleMask;
@property NSWindowToolbarStyle toolbarStyle API_AVAILABLE(macos(11.0));
@property NSWindowLevel level;
@property CGFloat alphaValue;
@property BOOL ignoresMouseEvents;
@property NSWindowCollectionBehavior collectionBehavior;
@property(getter=isRestorable) BOOL restorable;
@property BOOL canHide;
@property BOOL displaysWhenScreenProfileChanges;
@property(nullable, readonly, strong) NSWindow* sheetParent;
- (void)disableSnapshotRestoration;
- (NSRect)convertRectToScreen:(NSRect)rect;
- (void)setFrame:(NSRect)frame display:(BOOL)flag;
- (void)orderFront:(nullable id)sender;
- (void)orderOut:(nullable id)sender;
+ (instancetype)windowWithContentViewController:(NSViewController*)controller;
- (instancetype)initWithContentRect:(NSRect)rect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backing
                              defer:(BOOL)flag;
- (void)makeKeyAndOrderFront:(nullable id)sender;
- (void)setContentSize:(NSSize)size;
- (void)center;
- (void)close;
- (void)beginSheet:(NSWindow*)sheet
    completionHandler:(nullable void (^)(NSModalResponse code))handler;
- (void)endSheet:(NSWindow*)sheet;
@end

typedef NS_ENUM(NSUInteger, NSAlertStyle) {
  NSAlertStyleWarning = 0,
  NSAlertStyleInformational = 1,
  NSAlertStyleCritical = 2,
};
static const NSModalResponse NSAlertFirstButtonReturn = 1000;

@interface NSAlert : NSObject
@property(copy) NSString* messageText;
@property(copy) NSString* informativeText;
@property(null_resettable, strong) NSImage* icon;
@property NSAlertStyle alertStyle;
@property(nullable, strong) NSView* accessoryView;
@property(readonly, copy) NSArray<NSButton*>* buttons;
@property(readonly, strong) NSWindow* window;
- (NSButton*)addButtonWithTitle:(NSString*)title;
- (NSModalResponse)runModal;
- (void)beginSheetModalForWindow:(NSWindow*)window
               completionHandler:(nullable void (^)(NSModalResponse code))handler;
@end

@class NSPopover;
typedef NS_ENUM(NSInteger, NSPopoverBehavior) {
  NSPopoverBehaviorApplicationDefined = 0,
  NSPopoverBehaviorTransient = 1,
  NSPopoverBehaviorSemitransient = 2,
};

@protocol NSPopoverDelegate <NSObject>
@optional
- (void)popoverDidClose:(NSNotification*)notification;
@end

@interface NSPopover : NSResponder
@property(nullable, weak) id<NSPopoverDelegate> delegate;
@property NSPopoverBehavior behavior;
@property BOOL animates;
@property NSSize contentSize;
@property(nullable, strong) NSViewController* contentViewController;
@property(readonly, getter=isShown) BOOL shown;
- (void)showRelativeToRect:(NSRect)rect ofView:(NSView*)view preferredEdge:(NSRectEdge)edge;
- (void)close;
@end

typedef NS_ENUM(NSInteger, NSTabViewControllerTabStyle) { NSTabViewControllerTabStyleToolbar = 2 };

@interface NSTabViewItem : NSObject <NSCoding>
@property(copy) NSString* label;
@property(nullable, strong) NSImage* image;
+ (instancetype)tabViewItemWithViewController:(NSViewController*)controller;
@end

@interface NSTabViewController : NSViewController
@property NSTabViewControllerTabStyle tabStyle;
@property BOOL canPropagateSelectedChildViewControllerTitle;
@property NSInteger selectedTabViewItemIndex;
@property(copy) NSArray<__kindof NSTabViewItem*>* tabViewItems;
- (void)addTabViewItem:(NSTabViewItem*)item;
- (void)insertTabViewItem:(NSTabViewItem*)item atIndex:(NSInteger)index;
- (void)removeTabViewItem:(NSTabViewItem*)item;
@end

NS_ASSUME_NONNULL_END
