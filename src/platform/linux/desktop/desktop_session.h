// What the session's environment says of the desktop that runs. Main thread.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kelvane {

struct DesktopSession {
  // The desktop's names, its own first, as XDG_CURRENT_DESKTOP lists them; none when it does not.
  std::vector<std::string> desktops;
  // Whether a program can be started by this name or absolute path.
  std::function<bool(const std::string& program)> hasProgram;
};

DesktopSession currentDesktopSession();

// The names of a list like "ubuntu:GNOME".
std::vector<std::string> desktopNames(std::string_view list);

}  // namespace kelvane
