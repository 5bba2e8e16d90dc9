// How Kelvane's windows look, besides the desktop's theme. Main thread, once there is a display.
#pragma once

#include <optional>

namespace kelvane {

// Adds the few rules that no theme has.
void addLook();
// Absent: as the toolkit finds it.
void setDark(std::optional<bool> isDark);
void reduceMotion();

}  // namespace kelvane
