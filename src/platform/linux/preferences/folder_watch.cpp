#include "platform/linux/preferences/folder_watch.h"

#include <utility>

namespace kelvane {
namespace {

std::string nameOf(GFile* file) {
  const GCharPtr name(g_file_get_basename(file));
  return name ? name.get() : "";
}

}  // namespace

// The local file system by name: the default one may load modules that connect to services.
FolderWatch::FolderWatch(const std::filesystem::path& folder,
                         std::function<void(const std::string&)> changed)
    : folder_(g_vfs_get_file_for_path(g_vfs_get_local(), folder.c_str())),
      monitor_(
          g_file_monitor_directory(folder_.get(), G_FILE_MONITOR_WATCH_MOVES, nullptr, nullptr)),
      changed_(std::move(changed)) {
  if (monitor_) g_signal_connect(monitor_.get(), "changed", G_CALLBACK(onEvent), this);
}

FolderWatch::~FolderWatch() {
  if (!monitor_) return;
  g_signal_handlers_disconnect_by_data(monitor_.get(), this);
  g_file_monitor_cancel(monitor_.get());
}

void FolderWatch::onEvent(GFileMonitor*, GFile* file, GFile* otherFile, GFileMonitorEvent event,
                          gpointer self) {
  const auto& watch = *static_cast<FolderWatch*>(self);
  const auto changed = watch.changed_;  // outlives a watch that is destroyed inside
  switch (event) {
    case G_FILE_MONITOR_EVENT_DELETED:
    case G_FILE_MONITOR_EVENT_UNMOUNTED:
      changed(g_file_equal(file, watch.folder_.get()) ? "" : nameOf(file));
      return;
    case G_FILE_MONITOR_EVENT_CHANGES_DONE_HINT:
    case G_FILE_MONITOR_EVENT_MOVED_IN:
    case G_FILE_MONITOR_EVENT_MOVED_OUT:
      changed(nameOf(file));
      return;
    case G_FILE_MONITOR_EVENT_RENAMED:
      changed(nameOf(file));
      changed(nameOf(otherFile));
      return;
    default:
      return;
  }
}

}  // namespace kelvane
