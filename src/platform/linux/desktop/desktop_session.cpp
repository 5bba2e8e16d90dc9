#include "platform/linux/desktop/desktop_session.h"

#include <algorithm>
#include <cstdlib>

#include "platform/linux/glib/glib_ptr.h"

namespace kelvane {

std::vector<std::string> desktopNames(std::string_view list) {
  std::vector<std::string> names;
  while (!list.empty()) {
    const auto end = std::min(list.find(':'), list.size());
    if (end > 0) names.emplace_back(list.substr(0, end));
    list.remove_prefix(std::min(end + 1, list.size()));
  }
  return names;
}

DesktopSession currentDesktopSession() {
  const char* list = std::getenv("XDG_CURRENT_DESKTOP");
  return {desktopNames(list ? list : ""), [](const std::string& program) {
            return GCharPtr(g_find_program_in_path(program.c_str())) != nullptr;
          }};
}

}  // namespace kelvane
