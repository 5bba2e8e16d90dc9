// What the system asks of the application as a whole. Main thread; the state's maker and the run
// loop outlive it.
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include "app/app_state.h"
#include "intents/get_battery_details_intent_handler.h"
#include "platform/run_loop.h"

namespace kelvane {

class AppDelegate {
 public:
  // `appState` answers the one state of the application.
  AppDelegate(std::function<AppState&()> appState, RunLoop& runLoop)
      : appState_(std::move(appState)), runLoop_(runLoop) {}

  // The user opened the application again while it runs. True: go on as usual.
  bool applicationShouldHandleReopen(bool /*hasVisibleWindows*/) { return appState_().reopen(); }

  // A new handler for an action of the system's automation; null for one that is not ours.
  std::unique_ptr<GetBatteryDetailsIntentHandling> handlerForIntent(const Intent& intent) {
    return makeHandlerFor(intent, runLoop_,
                          [this]() -> const Battery& { return appState_().battery(); });
  }

 private:
  std::function<AppState&()> appState_;
  RunLoop& runLoop_;
};

}  // namespace kelvane
