// One line of a menu as AppKit's item. Main thread.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/menu.h"

namespace kelvane {

// It needs neither the line nor the menu that the line is from.
NSMenuItem* nativeMenuItem(const MenuLine& line);

}  // namespace kelvane
