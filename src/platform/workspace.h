// Opening things in other applications. Main thread; returns before anything is shown.
#pragma once

#include <string>

namespace kelvane {

class Workspace {
 public:
  virtual ~Workspace() = default;
  virtual void openUrl(const std::string& url) = 0;
  virtual void openFile(const std::string& path) = 0;
  // The system's own battery or power settings, wherever this system keeps them.
  virtual void openBatterySettings() = 0;
};

}  // namespace kelvane
