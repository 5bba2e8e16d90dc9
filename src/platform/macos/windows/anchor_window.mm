#include "platform/macos/windows/anchor_window.h"

#include "platform/macos/drawing/attributed_string.h"
#include "platform/portable/item_popover.h"

@implementation KelvaneAnchorWindow {
  __weak NSView* item_;
}

- (instancetype)initAtItem:(NSView*)item {
  const NSSize size = kelvane::nsSize(kelvane::kAnchorSize);
  if ((self = [super initWithContentRect:NSMakeRect(0, 0, size.width, size.height)
                               styleMask:NSWindowStyleMaskBorderless
                                 backing:NSBackingStoreBuffered
                                   defer:NO])) {
    item_ = item;
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
    [self follow:nil];
    for (NSNotificationName name in @[ NSWindowDidMoveNotification, NSWindowDidResizeNotification ])
      [NSNotificationCenter.defaultCenter addObserver:self
                                             selector:@selector(follow:)
                                                 name:name
                                               object:item.window];
  }
  return self;
}

- (void)dealloc {
  [NSNotificationCenter.defaultCenter removeObserver:self];
}

- (void)follow:(NSNotification*)notification {
  (void)notification;
  NSView* item = item_;
  NSWindow* window = item.window;
  if (!window) return;
  const NSRect onScreen = [window convertRectToScreen:[item convertRect:item.bounds toView:nil]];
  [self setFrame:kelvane::nsRect(kelvane::anchorFrame(kelvane::rectOf(onScreen))) display:NO];
}

@end
