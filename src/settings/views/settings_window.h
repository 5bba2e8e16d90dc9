// The settings window: opens it, keeps it true to the settings and carries out what the user does
// in it. Main thread; what it is given outlives it, and its end closes the window.
//
// It holds no copy of a setting, and forgets all else (an open sheet, a warning) with the window.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "kit/auto_start.h"
#include "platform/run_loop.h"
#include "platform/windows.h"
#include "settings/settings_keys.h"

namespace kelvane {

class SettingsWindow {
 public:
  // `applyVisibility` is called after each change of `hideIconWhenOnPower` while the window is
  // open.
  SettingsWindow(Windows& windows, RunLoop& runLoop, const SettingsKeys& settings,
                 AutoStart& autoStart, std::string applicationName,
                 std::function<void()> applyVisibility);
  ~SettingsWindow();
  SettingsWindow(const SettingsWindow&) = delete;
  SettingsWindow& operator=(const SettingsWindow&) = delete;

  // Opens the window, or brings the open one to the front. Nothing where no window can be shown;
  // the next call tries again.
  void show();

 private:
  class Session;
  void closed();

  Windows& windows_;
  RunLoop& runLoop_;
  const SettingsKeys& settings_;
  AutoStart& autoStart_;
  const std::string title_;
  const std::function<void()> applyVisibility_;
  std::shared_ptr<Session> session_;  // while the window is open
  std::shared_ptr<Session> closing_;  // the window can't end inside its own call
};

}  // namespace kelvane
