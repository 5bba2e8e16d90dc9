#include "platform/linux/power/supply_watch.h"

#include <array>
#include <cstdio>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <glib-unix.h>
#include <libudev.h>
#include <linux/magic.h>
#include <sys/inotify.h>
#include <sys/vfs.h>
#include <unistd.h>

namespace kelvane {
namespace {

constexpr double kEvery = 30;  // seconds
constexpr std::array<double, 2> kAfterAnEvent{1, 5};
constexpr int kMostWatchedFolders = 64;

bool isSysfs(const std::string& directory) {
  struct statfs about {};
  return statfs(directory.c_str(), &about) == 0 && about.f_type == SYSFS_MAGIC;
}

// udev passes events on after its rules have run; where it isn't running the kernel's own serve.
const char* eventSender() { return access("/run/udev/control", F_OK) == 0 ? "udev" : "kernel"; }

}  // namespace

SupplyWatch::SupplyWatch(RunLoop& loop, std::string directory, std::function<void()> look)
    : loop_(loop), directory_(std::move(directory)), look_(std::move(look)) {
  everyHalfMinute_ = loop_.startTimer(kEvery, true, [this] { look_(); });
  if (!watchKernel())
    std::fputs("kelvane: no power events from the kernel here; looking every 30 seconds\n", stderr);
  if (isSysfs(directory_)) return;
  inotify_ = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  if (inotify_ < 0) return;
  watchFiles();
  fileSource_ = g_unix_fd_add(
      inotify_, G_IO_IN,
      [](gint, GIOCondition, gpointer self) -> gboolean {
        static_cast<SupplyWatch*>(self)->filesChanged();
        return G_SOURCE_CONTINUE;
      },
      this);
}

SupplyWatch::~SupplyWatch() {
  if (kernelSource_) g_source_remove(kernelSource_);
  if (fileSource_) g_source_remove(fileSource_);
  if (inotify_ >= 0) close(inotify_);
  udev_monitor_unref(monitor_);
  udev_unref(udev_);
}

bool SupplyWatch::watchKernel() {
  udev_ = udev_new();
  if (!udev_) return false;
  monitor_ = udev_monitor_new_from_netlink(udev_, eventSender());
  if (!monitor_) return false;
  if (udev_monitor_filter_add_match_subsystem_devtype(monitor_, "power_supply", nullptr) < 0 ||
      udev_monitor_enable_receiving(monitor_) < 0)
    return false;
  kernelSource_ = g_unix_fd_add(
      udev_monitor_get_fd(monitor_), G_IO_IN,
      [](gint, GIOCondition, gpointer self) -> gboolean {
        static_cast<SupplyWatch*>(self)->kernelSpoke();
        return G_SOURCE_CONTINUE;
      },
      this);
  return true;
}

void SupplyWatch::kernelSpoke() {
  while (udev_device* device = udev_monitor_receive_device(monitor_)) udev_device_unref(device);
  soon_.clear();
  for (const double seconds : kAfterAnEvent)
    soon_.push_back(loop_.startTimer(seconds, false, [this] { look_(); }));
  look_();
}

// Whole writes only: a file that is just being written reads as empty.
void SupplyWatch::watchFiles() {
  constexpr std::uint32_t kFolder = IN_CREATE | IN_DELETE | IN_MOVED_TO | IN_MOVED_FROM;
  inotify_add_watch(inotify_, directory_.c_str(), kFolder | IN_ONLYDIR);
  DIR* folder = opendir(directory_.c_str());
  if (!folder) return;
  int count = 0;
  while (const dirent* entry = readdir(folder)) {
    if (entry->d_name[0] == '.') continue;
    if (++count > kMostWatchedFolders) break;
    const std::string supply = directory_ + "/" + entry->d_name;
    inotify_add_watch(inotify_, supply.c_str(), kFolder | IN_CLOSE_WRITE | IN_ONLYDIR);
  }
  closedir(folder);
}

void SupplyWatch::filesChanged() {
  std::array<char, 4096> events{};
  while (read(inotify_, events.data(), events.size()) > 0) continue;
  watchFiles();  // for supplies that came; those already watched are not watched twice
  look_();
}

}  // namespace kelvane
