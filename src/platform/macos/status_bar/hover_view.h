// The view over the item's button that shows a popover while the pointer rests on it. Main thread.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/status_bar.h"

// Covers its superview and lets clicks through.
@interface KelvaneHoverView : NSView

- (instancetype)initWithHoverView:(kelvane::HoverView)hoverView NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithFrame:(NSRect)frame NS_UNAVAILABLE;
- (instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;

// Closes the popover and calls nobody from here on.
- (void)detachHoverView;

@end
