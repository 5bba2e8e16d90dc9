// The invisible window that popovers point at in place of the status item, whose own window may go
// while they are shown. Main thread.
#pragma once

#import <AppKit/AppKit.h>

@interface KelvaneAnchorWindow : NSWindow

// At the item, and with it wherever it moves; where it was last once the item is in no window.
- (instancetype)initAtItem:(NSView*)item;

@end
