#include "platform/macos/windows/anchor_window.h"

#include "platform/macos/drawing/attributed_string.h"
#include "platform/portable/item_popover.h"

@implementation KelvaneAnchorWindow {
  __weak NSView* item_;
  NSMutableArray<id<NSObject>>* notices_;
}

- (instancetype)initAtItem:(NSView*)item {
  const NSSize size = kelvane::nsSize(kelvane::kAnchorSize);
  if ((self = [super initWithContentRect:NSMakeRect(0, 0, size.width, size.height)
                               styleMask:NSWindowStyleMaskBorderless
                                 backing:NSBackingStoreBuffered
                                   defer:NO])) {
    item_ = item;
    notices_ = [NSMutableArray arrayWithCapacity:2];
    self.releasedWhenClosed = NO;
    self.ignoresMouseEvents = YES;
    self.alphaValue = 0;
    self.collectionBehavior =
        NSWindowCollectionBehaviorStationary | NSWindowCollectionBehaviorIgnoresCycle;
    self.restorable = NO;
    self.canHide = YES;
    self.displaysWhenScreenProfileChanges = YES;
    [self disableSnapshotRestoration];
    self.level = NSStatusWindowLevel;
    [self follow];
    [self followAfter:NSWindowDidMoveNotification];
    [self followAfter:NSWindowDidResizeNotification];
  }
  return self;
}

- (void)dealloc {
  for (id<NSObject> notice in notices_) [NSNotificationCenter.defaultCenter removeObserver:notice];
}

- (void)followAfter:(NSNotificationName)name {
  __weak KelvaneAnchorWindow* weakSelf = self;
  [notices_ addObject:[NSNotificationCenter.defaultCenter addObserverForName:name
                                                                      object:item_.window
                                                                       queue:nil
                                                                  usingBlock:^(NSNotification*) {
                                                                    [weakSelf follow];
                                                                  }]];
}

- (void)follow {
  NSView* item = item_;
  NSWindow* window = item.window;
  if (!window) return;
  const NSRect onScreen = [window convertRectToScreen:[item convertRect:item.bounds toView:nil]];
  [self setFrame:kelvane::nsRect(kelvane::anchorFrame(kelvane::rectOf(onScreen))) display:NO];
}

@end
