// A text in a popover at the status item. Main thread.
#pragma once

#include <functional>
#include <memory>

#import <AppKit/AppKit.h>

#include "platform/windows.h"

namespace kelvane {

// Null when `item` is nil, or in no window that is on a screen and the content does not want to be
// shown then.
std::unique_ptr<PopoverHandle> showItemPopover(NSView* item, const PopoverContent& content,
                                               std::function<void()> closed);

}  // namespace kelvane
