// Hearing of files that come, go and are replaced in a folder. Main thread, with GLib's main loop;
// nothing wakes the process while nothing happens.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "platform/linux/glib/glib_ptr.h"

namespace kelvane {

class FolderWatch {
 public:
  // `changed` gets the name of a file that has appeared, was replaced, was written and closed, or
  // has gone; an empty name when the folder itself has gone, after which nothing more is heard. It
  // may destroy the watch.
  //
  // The folder must be there: one that is missing would be looked for again and again.
  FolderWatch(const std::filesystem::path& folder, std::function<void(const std::string&)> changed);
  ~FolderWatch();
  FolderWatch(const FolderWatch&) = delete;
  FolderWatch& operator=(const FolderWatch&) = delete;

 private:
  static void onEvent(GFileMonitor*, GFile* file, GFile* otherFile, GFileMonitorEvent event,
                      gpointer self);

  GObjectPtr<GFile> folder_;
  GObjectPtr<GFileMonitor> monitor_;  // null when the system can't watch
  const std::function<void(const std::string&)> changed_;
};

}  // namespace kelvane
