// An application's menu as AppKit has it: its items are thrown away and built anew from the lines
// whenever the menu is about to be shown. Main thread.
#pragma once

#include <memory>

#import <AppKit/AppKit.h>

#include "platform/menu.h"

// Its own delegate: AppKit's calls go on to the application's menu.
@interface KelvaneNativeMenu : NSMenu <NSMenuDelegate>

// Shares the menu, or with a pointer that owns nothing only knows it, until
// `detachApplicationMenu`.
- (instancetype)initWithMenu:(std::shared_ptr<kelvane::Menu>)menu NS_DESIGNATED_INITIALIZER;
- (instancetype)initWithTitle:(NSString*)title NS_UNAVAILABLE;
- (instancetype)initWithCoder:(NSCoder*)coder NS_UNAVAILABLE;

// The application's menu is not called from here on.
- (void)detachApplicationMenu;

@end
