#include "app/app_main.h"

#include <utility>

#include "settings/migrations.h"

namespace kelvane {

AppMain::AppMain(const Platform& platform, ApplicationInformation information)
    : platform_(platform),
      information_(std::move(information)),
      settings_(platform.preferences),
      appDelegate_([this]() -> AppState& { return appState(); }, platform.runLoop) {
  migrate(platform_.preferences, settings_);
}

AppState& AppMain::appState() {
  if (!appState_) appState_ = std::make_unique<AppState>(platform_, settings_, information_);
  return *appState_;
}

}  // namespace kelvane
