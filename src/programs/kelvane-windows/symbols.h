// The icons that a tree's symbols and Kelvane itself are shown with. Main thread.
#pragma once

#include <string>

namespace kelvane {

// The icon of the desktop's theme for a symbol; null for one that has none.
const char* symbolIcon(const std::string& symbol);

// Kelvane's own icon, also where it is not installed.
inline constexpr const char* kApplicationIcon = "org.kelvane.Kelvane";

// Makes both known to the toolkit, once there is a display.
void addIcons();

}  // namespace kelvane
