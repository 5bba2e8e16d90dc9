// What windows are filled with: stacks, boxes, tabs; and sheets over them.
#include "doubles.h"

@implementation NSBox
@end

@interface NSStackView () {
  NSMutableArray<NSView*>* arranged_;
}
@end

@implementation NSStackView
- (instancetype)initWithFrame:(NSRect)frame {
  if ((self = [super initWithFrame:frame])) arranged_ = [NSMutableArray arrayWithCapacity:0];
  return self;
}
// A view that leaves its superview is arranged no longer.
- (NSArray*)arrangedSubviews {
  NSMutableArray* present = [NSMutableArray arrayWithCapacity:0];
  for (NSView* each in arranged_)
    if (each.superview == self) [present addObject:each];
  arranged_ = present;
  return [present copy];
}
- (void)addArrangedSubview:(NSView*)view {
  [self insertArrangedSubview:view atIndex:static_cast<NSInteger>(self.arrangedSubviews.count)];
}
- (void)insertArrangedSubview:(NSView*)view atIndex:(NSInteger)index {
  if (static_cast<NSUInteger>(index) > self.arrangedSubviews.count)
    @throw [[NSException alloc] init];
  [arranged_ insertObject:view atIndex:static_cast<NSUInteger>(index)];
  [self addSubview:view];
}
// One gravity at a time, so the index is the same.
- (void)insertView:(NSView*)view atIndex:(NSUInteger)index inGravity:(NSStackViewGravity)gravity {
  (void)gravity;
  [self insertArrangedSubview:view atIndex:static_cast<NSInteger>(index)];
}
@end

@interface NSTabViewItem ()
@property(strong) NSViewController* viewController;
@end

@implementation NSTabViewItem
+ (instancetype)tabViewItemWithViewController:(NSViewController*)controller {
  NSTabViewItem* item = [[self alloc] init];
  item.viewController = controller;
  return item;
}
@end

@interface NSTabViewController () {
  NSMutableArray<NSTabViewItem*>* items_;
}
@end

@implementation NSTabViewController
@dynamic tabViewItems;
- (instancetype)init {
  if ((self = [super init])) items_ = [NSMutableArray arrayWithCapacity:0];
  return self;
}
- (NSArray*)tabViewItems {
  return [items_ copy];
}
- (void)insertTabViewItem:(NSTabViewItem*)item atIndex:(NSInteger)index {
  [items_ insertObject:item atIndex:static_cast<NSUInteger>(index)];
}
- (void)removeTabViewItem:(NSTabViewItem*)item {
  if (![items_ containsObject:item]) @throw [[NSException alloc] init];
  [items_ removeObject:item];
}
@end

NSNotificationName const NSWindowDidChangeBackingPropertiesNotification = @"backing properties";
NSNotificationName const NSWindowDidMoveNotification = @"moved";
NSNotificationName const NSWindowDidResizeNotification = @"resized";

@implementation NSWindow {
  NSView* contentView_;
}
@dynamic appearance, effectiveAppearance, contentView;
- (instancetype)initWithContentRect:(NSRect)rect
                          styleMask:(NSWindowStyleMask)style
                            backing:(NSBackingStoreType)backing
                              defer:(BOOL)flag {
  (void)rect, (void)backing, (void)flag;
  if ((self = [super init])) {
    self.styleMask = style;
    self.contentView = [[NSView alloc] init];
  }
  return self;
}
// Its view stays in it for as long as it lives.
- (void)setContentView:(NSView*)view {
  contentView_ = view;
  [view kelvanePutIntoWindow:self];
}
- (NSView*)contentView {
  return contentView_;
}
- (void)dealloc {
  [contentView_ kelvanePutIntoWindow:nil];
}
- (void)disableSnapshotRestoration {
}
- (NSRect)convertRectToScreen:(NSRect)rect {
  return rect;
}
- (void)setFrame:(NSRect)frame display:(BOOL)flag {
  (void)flag;
  self.frame = frame;
}
- (void)orderFront:(id)sender {
  (void)sender;
  self.visible = YES;
}
- (void)orderOut:(id)sender {
  (void)sender;
  self.visible = NO;
}
+ (instancetype)windowWithContentViewController:(NSViewController*)controller {
  NSWindow* window = [[self alloc] initWithContentRect:NSMakeRect(0, 0, 1, 1)
                                             styleMask:NSWindowStyleMaskTitled
                                               backing:NSBackingStoreBuffered
                                                 defer:YES];
  window.contentViewController = controller;
  if (controller.view) window.contentView = controller.view;
  return window;
}
- (void)setContentSize:(NSSize)size {
  (void)size;
}
- (void)center {
}
- (void)makeKeyAndOrderFront:(id)sender {
  [self orderFront:sender];
  kelvane::doubles::application().front = self;
}
- (void)close {
  if (!self.visible) return;
  self.visible = NO;
  NSNotification* notification = [[NSNotification alloc] init];
  notification.object = self;
  if ([self.delegate respondsToSelector:@selector(windowWillClose:)])
    [self.delegate windowWillClose:notification];
  if (kelvane::doubles::application().front == self) kelvane::doubles::application().front = nil;
}
- (void)beginSheet:(NSWindow*)sheet completionHandler:(void (^)(NSModalResponse))completionHandler {
  sheet.sheetParent = self;
  sheet.kelvaneEnded = completionHandler;
  kelvane::doubles::application().sheet = sheet;
}
- (void)endSheet:(NSWindow*)sheet {
  [self kelvaneEndSheet:sheet answer:NSModalResponseStop];
}
- (void)kelvaneEndSheet:(NSWindow*)sheet answer:(NSModalResponse)answer {
  if (sheet.sheetParent != self) @throw [[NSException alloc] init];
  void (^ended)(NSModalResponse) = sheet.kelvaneEnded;
  sheet.sheetParent = nil;
  sheet.kelvaneEnded = nil;
  kelvane::doubles::application().sheet = nil;
  if (ended) ended(answer);
}
@end
