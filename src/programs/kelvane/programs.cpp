#include "programs/kelvane/programs.h"

#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstring>
#include <string>

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

void becomeProgram(const std::string& name, char* const* arguments) {
  const std::string own = ownFolder();
  for (const std::string& folder :
       {own, own + "../libexec/kelvane/", own + "../../bin/", std::string(KELVANE_LIBEXEC "/")})
    if (!folder.empty()) execv((folder + name).c_str(), arguments);
  execvp(name.c_str(), arguments);
  std::fprintf(stderr, "kelvane: can't start %s: %s\n", name.c_str(), std::strerror(errno));
}

}  // namespace kelvane
