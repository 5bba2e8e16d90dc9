#include "programs/kelvane-autostart-helper/bus_wait.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <string_view>

#include <poll.h>
#include <sys/inotify.h>
#include <sys/stat.h>

#include "platform/linux/files/unique_fd.h"

namespace kelvane {
namespace {

using Clock = std::chrono::steady_clock;

bool isSocket(const std::string& path) {
  struct stat about {};
  return stat(path.c_str(), &about) == 0 && S_ISSOCK(about.st_mode);
}

// The last folder on the way to a path that is there.
std::string deepestFolder(std::string path) {
  struct stat about {};
  do {
    path.erase(path.rfind('/'));
  } while (!path.empty() && !(stat(path.c_str(), &about) == 0 && S_ISDIR(about.st_mode)));
  return path.empty() ? "/" : path;
}

int digit(char c) {
  constexpr std::string_view kDigits = "0123456789abcdef0123456789ABCDEF";
  const auto at = kDigits.find(c);
  return at == std::string_view::npos ? -1 : static_cast<int>(at % 16);
}

// In an address some bytes are written as % and two digits; what is no such text reads as "".
std::string unescaped(std::string_view text) {
  std::string result;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      result += text[i];
      continue;
    }
    const int high = i + 2 < text.size() ? digit(text[i + 1]) : -1;
    const int low = high < 0 ? -1 : digit(text[i + 2]);
    if (low < 0) return "";
    result += static_cast<char>(high * 16 + low);
    i += 2;
  }
  return result;
}

// The value of "path" in "unix:path=/run/user/1000/bus,guid=...".
std::string pathOf(std::string_view address) {
  constexpr std::string_view kTransport = "unix:";
  if (!address.starts_with(kTransport)) return "";
  address.remove_prefix(kTransport.size());
  while (!address.empty()) {
    const std::string_view pair = address.substr(0, address.find(','));
    if (pair.starts_with("path=")) return unescaped(pair.substr(5));
    address.remove_prefix(std::min(pair.size() + 1, address.size()));
  }
  return "";
}

}  // namespace

std::string sessionBusSocket(const char* address, const char* runtimeFolder) {
  std::string path;
  if (address && *address) {
    // Of several addresses the first is tried first.
    const std::string_view all(address);
    path = pathOf(all.substr(0, all.find(';')));
  } else if (runtimeFolder && *runtimeFolder) {
    path = std::string(runtimeFolder) + "/bus";
  }
  return path.starts_with('/') ? path : "";
}

std::string waitForSocket(const std::string& path, std::chrono::milliseconds patience) {
  const auto deadline = Clock::now() + patience;
  if (isSocket(path)) return "";
  while (true) {
    // A new one each time: removing a watch is an event, too.
    const UniqueFd inotify(inotify_init1(IN_CLOEXEC));
    const std::string folder = deepestFolder(path);
    const int watch = inotify_add_watch(
        inotify.get(), folder.c_str(),
        IN_CREATE | IN_MOVED_TO | IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR);
    const int error = errno;
    if (watch < 0 && error != ENOENT && error != ENOTDIR) return std::strerror(error);
    // What came before the watch did has told nobody.
    if (isSocket(path)) return "";
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    if (left <= 0) return "it did not come in time";
    if (watch < 0 || deepestFolder(path) != folder) continue;
    pollfd waiting{inotify.get(), POLLIN, 0};
    poll(&waiting, 1, static_cast<int>(left));
  }
}

}  // namespace kelvane
