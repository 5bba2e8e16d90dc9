// The two appearances of the house as AppKit's, and any of AppKit's as one of the two. Main thread.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/color.h"

namespace kelvane {

NSAppearance* nsAppearance(Appearance appearance);

// Of what a bar lends its items too: the vibrant ones, and those of high contrast.
Appearance appearanceOf(NSAppearance* appearance);

}  // namespace kelvane
