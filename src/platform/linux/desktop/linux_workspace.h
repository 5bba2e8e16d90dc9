// Opening things in other applications: by the desktop's portal where there is one, else by
// xdg-open; power settings by the desktop's own program. Main thread. Nothing is kept in memory
// before the first use; what fails is said in one line on standard error.
#pragma once

#include <memory>
#include <string>

#include <glib.h>

#include "platform/linux/glib/bus.h"
#include "platform/workspace.h"

namespace kelvane {

class LinuxWorkspace : public Workspace {
 public:
  // `sessionBus` outlives this.
  explicit LinuxWorkspace(BusConnection* sessionBus);
  ~LinuxWorkspace() override;

  // Addresses beginning with http://, https:// or file:// in small letters; all others are refused.
  void openUrl(const std::string& url) override;
  void openFile(const std::string& path) override;
  void openBatterySettings() override;

 private:
  BusConnection* sessionBus_;
  std::unique_ptr<BusCalls> calls_;
  std::unique_ptr<SignalSubscription> response_;  // of the latest request
  unsigned requests_ = 0;
};

}  // namespace kelvane
