// Images and pictures as AppKit has them: drawn when they are shown, at the scale of the screen.
// Main thread.
#pragma once

#import <AppKit/AppKit.h>

#include "platform/image.h"
#include "platform/picture.h"

namespace kelvane {

NSImage* nsImage(const Image& image);

// In its natural size. A layer without a colour is black, which a template's is replaced by.
NSImage* nsImage(const Picture& picture);

}  // namespace kelvane
