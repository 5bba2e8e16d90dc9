#include "programs/kelvane/programs.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <string>
#include <system_error>

#include <unistd.h>

namespace kelvane {
namespace {

// With its slash; empty when the system does not tell.
std::string ownFolder() {
  char path[PATH_MAX];
  const ssize_t size = readlink("/proc/self/exe", path, sizeof path);
  if (size <= 0 || size == static_cast<ssize_t>(sizeof path)) return "";
  const std::string whole(path, static_cast<std::size_t>(size));
  return whole.substr(0, whole.rfind('/') + 1);
}

}  // namespace

std::string programPath(const std::string& name) {
  const std::string own = ownFolder();
  for (const std::string& folder :
       {own, own + "../libexec/kelvane/", own + "../../bin/", std::string(KELVANE_LIBEXEC "/")}) {
    if (!folder.starts_with('/')) continue;
    const auto path = std::filesystem::path(folder + name).lexically_normal();
    std::error_code error;
    if (std::filesystem::is_regular_file(path, error) && access(path.c_str(), X_OK) == 0)
      return path;
  }
  return "";
}

void becomeProgram(const std::string& name, char* const* arguments) {
  const std::string path = programPath(name);
  if (!path.empty()) execv(path.c_str(), arguments);
  execvp(name.c_str(), arguments);
  std::fprintf(stderr, "kelvane: can't start %s: %s\n", name.c_str(), std::strerror(errno));
}

}  // namespace kelvane
