// The application's entry: it brings old settings into the present form, then makes the one
// `AppState`. Main thread; made once, by `main`, over a platform that outlives it.
#pragma once

#include <memory>

#include "app/app_delegate.h"
#include "app/app_state.h"
#include "platform/application_information.h"
#include "platform/platform.h"
#include "settings/settings_keys.h"

namespace kelvane {

class AppMain {
 public:
  // Migrates the settings; nothing else has read one by then.
  AppMain(const Platform& platform, ApplicationInformation information);
  AppMain(const AppMain&) = delete;
  AppMain& operator=(const AppMain&) = delete;

  AppDelegate& appDelegate() { return appDelegate_; }
  // Made at the first call: that is when the launch is counted and start-up begins.
  AppState& appState();
  const SettingsKeys& settings() const { return settings_; }

 private:
  Platform platform_;
  ApplicationInformation information_;
  SettingsKeys settings_;
  AppDelegate appDelegate_;
  std::unique_ptr<AppState> appState_;
};

}  // namespace kelvane
