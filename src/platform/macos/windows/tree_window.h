// A window that shows a view tree: the settings. Main thread.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/windows.h"

namespace kelvane {

// In the middle of the screen, in front.
std::unique_ptr<ViewWindow> openTreeWindow(const std::string& title, const ViewNode& tree,
                                           ViewWindowEvents events);

}  // namespace kelvane
