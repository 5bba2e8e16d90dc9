// Menus, their items and the status bar.
#pragma once

#import <AppKit/NSControls.h>

NS_ASSUME_NONNULL_BEGIN

@protocol NSMenuDelegate <NSObject>
@optional
- (void)menuNeedsUpdate:(NSMenu*)menu;
- (void)menuWillOpen:(NSMenu*)menu;
- (void)menuDidClose:(NSMenu*)menu;
@end

@interface NSMenu : NSObject <NSCopying, NSCoding, NSUserInterfaceItemIdentification>
@property(copy) NSString* title;
@property(nullable, weak) id<NSMenuDelegate> delegate;
@property BOOL autoenablesItems;
@property(readonly) NSInteger numberOfItems;
@property(copy) NSArray<NSMenuItem*>* itemArray;
- (instancetype)initWithTitle:(NSString*)title;
- (void)addItem:(NSMenuItem*)item;
- (void)removeAllItems;
- (void)update;
- (void)cancelTracking;
@end

@interface NSMenuItem : NSObject <NSCopying, NSCoding, NSUserInterfaceItemIdentification>
@property(copy) NSString* title;
@property(nullable, copy) NSAttributedString* attributedTitle;
@property(copy) NSString* keyEquivalent;
@property NSEventModifierFlags keyEquivalentModifierMask;
@property(getter=isEnabled) BOOL enabled;
@property(getter=isAlternate) BOOL alternate;
@property(nullable, weak) id target;
@property(nullable) SEL action;
@property(nullable, strong) NSView* view;
@property(nullable, strong) NSMenu* submenu;
+ (NSMenuItem*)separatorItem;
- (instancetype)initWithTitle:(NSString*)title
                       action:(nullable SEL)action
                keyEquivalent:(NSString*)key NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithCoder:(NSCoder*)coder NS_DESIGNATED_INITIALIZER;
@end

@class NSStatusItem;
static const CGFloat NSVariableStatusItemLength = -1.0;
static const CGFloat NSSquareStatusItemLength = -2.0;

@interface NSStatusBar : NSObject
@property(class, readonly, strong) NSStatusBar* systemStatusBar;
@property(readonly) CGFloat thickness;
- (NSStatusItem*)statusItemWithLength:(CGFloat)length;
- (void)removeStatusItem:(NSStatusItem*)item;
@end

@interface NSStatusBarButton : NSButton
@property BOOL appearsDisabled;
@end

typedef NS_OPTIONS(NSUInteger, NSStatusItemBehavior) {
  NSStatusItemBehaviorRemovalAllowed = 1 << 1,
  NSStatusItemBehaviorTerminationOnRemoval = 1 << 2,
};

@interface NSStatusItem : NSObject
@property CGFloat length;
@property(nullable, strong) NSMenu* menu;
@property(nullable, readonly, strong) NSStatusBarButton* button;
@property NSStatusItemBehavior behavior;
@property(getter=isVisible) BOOL visible;
@property(null_resettable, copy) NSString* autosaveName;
@end

NS_ASSUME_NONNULL_END
