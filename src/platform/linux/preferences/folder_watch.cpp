#include "platform/linux/preferences/folder_watch.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

#include <glib-unix.h>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kelvane {
namespace {

// Whole writes only: a file that is just being written is not what it will be.
constexpr std::uint32_t kOfFiles = IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE;
// Of these, the folder's own end; the kernel tells its being unmounted unasked.
constexpr std::uint32_t kOfFolder = IN_DELETE_SELF | IN_MOVE_SELF;
constexpr std::uint32_t kEnd = kOfFolder | IN_UNMOUNT | IN_IGNORED;
constexpr std::size_t kMostBytes = 4096;

// A link is there at once, and no write of it ends.
bool isLink(const std::filesystem::path& path) {
  struct stat about {};
  return lstat(path.c_str(), &about) == 0 && (S_ISLNK(about.st_mode) || about.st_nlink > 1);
}

}  // namespace

FolderWatch::FolderWatch(const std::filesystem::path& folder,
                         std::function<void(const std::string&)> changed)
    : folder_(folder),
      inotify_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)),
      changed_(std::move(changed)) {
  if (!inotify_ || inotify_add_watch(inotify_.get(), folder.c_str(),
                                     kOfFiles | IN_CREATE | kOfFolder | IN_ONLYDIR) < 0)
    return;
  source_ = g_unix_fd_add(
      inotify_.get(), G_IO_IN,
      [](gint, GIOCondition, gpointer self) -> gboolean {
        static_cast<FolderWatch*>(self)->read();
        return G_SOURCE_CONTINUE;
      },
      this);
}

FolderWatch::~FolderWatch() {
  if (source_) g_source_remove(source_);
}

void FolderWatch::read() {
  std::vector<std::string> names;
  bool hasEnded = false;
  alignas(inotify_event) std::array<char, kMostBytes> buffer;
  ssize_t got = 0;
  while ((got = ::read(inotify_.get(), buffer.data(), buffer.size())) > 0) {
    for (std::size_t at = 0; at < static_cast<std::size_t>(got);) {
      const auto* event = reinterpret_cast<const inotify_event*>(buffer.data() + at);
      at += sizeof(inotify_event) + event->len;
      const std::string name = event->len > 0 ? event->name : "";
      hasEnded = hasEnded || event->mask & kEnd;
      if (!name.empty() && (event->mask & kOfFiles || isLink(folder_ / name)))
        names.push_back(name);
    }
  }
  // Each may destroy the watch.
  const auto changed = changed_;
  const std::weak_ptr alive(isAlive_);
  if (hasEnded) g_source_remove(std::exchange(source_, 0));
  for (const std::string& name : names)
    if (!alive.expired()) changed(name);
  if (hasEnded && !alive.expired()) changed("");
}

}  // namespace kelvane
