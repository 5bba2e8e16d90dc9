// An alert of the application as AppKit's. Main thread.
#pragma once

#include <cstddef>

#import <AppKit/AppKit.h>

#include "platform/windows.h"

namespace kelvane {

NSAlert* nsAlert(const Alert& alert);

// The place of the button that ended it; below 0 when none did.
inline std::ptrdiff_t buttonPlace(NSModalResponse response) {
  return response - NSAlertFirstButtonReturn;
}

}  // namespace kelvane
