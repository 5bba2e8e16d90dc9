// Opening things by the application that the user chose for them. Main thread.
#pragma once

#include <string>

#include "platform/workspace.h"

namespace kelvane {

class MacWorkspace : public Workspace {
 public:
  // A text that is no address opens nothing.
  void openUrl(const std::string& url) override;
  void openFile(const std::string& path) override;
  // The preference pane: "Battery", which is "Energy Saver" before macOS 11.
  void openBatterySettings() override;
};

}  // namespace kelvane
