// The application's one central object: it owns the battery, the menu and the item, and carries
// every change from one to the other. Main thread.
//
// Made once, by `main`, over a platform that outlives it.
#pragma once

#include <functional>
#include <memory>

#include "battery/battery.h"
#include "kit/kit_keys.h"
#include "menu/tq_menu.h"
#include "menubar/status_item_controller.h"
#include "platform/platform.h"
#include "reactive/subscription.h"
#include "settings/settings_keys.h"

namespace kelvane {

class AppState {
 public:
  // Starts on the next turn of the main queue.
  AppState(const Platform& platform, const SettingsKeys& settings);
  ~AppState();
  AppState(const AppState&) = delete;
  AppState& operator=(const AppState&) = delete;

  // Made at the first use.
  Battery& battery();
  StatusItemController& statusItemController();

  TqMenu& menu() { return menu_; }

  // The user opened the application again: shows a hidden item for five seconds. True: handled.
  bool applicationShouldHandleReopen();

 private:
  void start();
  // Five seconds from now the item obeys the visibility rule again.
  void applyVisibilityLater();
  std::function<void()> guarded(std::function<void()> job);
  void connectSubscriptions();
  void batteryDidChange(bool adapterDidChange);
  void rebuildMenu();

  Platform platform_;
  const SettingsKeys& settings_;
  KitKeys kitKeys_;
  // Ends last: the subscriptions below hold on to what is made of it.
  std::unique_ptr<Battery> battery_;
  TqMenu menu_;
  std::unique_ptr<StatusItemController> statusItem_;
  Cancellables cancellables_;
  // Tells queued jobs that this is still there.
  std::shared_ptr<AppState*> self_;
};

}  // namespace kelvane
