// Hearing of files that come, go and are replaced in a folder. Main thread, with GLib's main loop;
// nothing wakes the process while nothing happens.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "platform/linux/files/unique_fd.h"

namespace kelvane {

class FolderWatch {
 public:
  // `changed` gets the name of a file that has appeared, was replaced, was written and closed, or
  // has gone; an empty name when the folder itself has gone, after which nothing more is heard. It
  // may destroy the watch.
  //
  // Without the folder nothing is heard.
  FolderWatch(const std::filesystem::path& folder, std::function<void(const std::string&)> changed);
  ~FolderWatch();
  FolderWatch(const FolderWatch&) = delete;
  FolderWatch& operator=(const FolderWatch&) = delete;

 private:
  void read();

  const std::filesystem::path folder_;
  UniqueFd inotify_;     // none when the system can't watch
  unsigned source_ = 0;  // GLib's id; 0 is none
  const std::function<void(const std::string&)> changed_;
  std::shared_ptr<bool> isAlive_ = std::make_shared<bool>(true);
};

}  // namespace kelvane
