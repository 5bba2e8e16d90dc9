// Pictures by the names of the system's symbols. Main thread.
#pragma once

#include <string>

#import <AppKit/AppKit.h>

namespace kelvane {

// Nil for a name that is not known. `label` is what assistive programs say of it.
NSImage* symbolImage(const std::string& name, const std::string& label);

}  // namespace kelvane
