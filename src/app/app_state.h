// The application's one central object: it owns the battery, the menu and the item, and carries
// every change from one to the others and to the notices. Main thread.
//
// Made once, by `AppMain`, over a platform that outlives it.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "app/feedback.h"
#include "app/welcome.h"
#include "battery/battery.h"
#include "kit/auto_start.h"
#include "kit/tq_kit.h"
#include "menu/battery_menu.h"
#include "menu/tq_menu.h"
#include "menubar/status_item_controller.h"
#include "notifications/low_battery_alert.h"
#include "platform/application_information.h"
#include "platform/platform.h"
#include "reactive/subscription.h"
#include "settings/settings_keys.h"
#include "settings/views/settings_window.h"

namespace kelvane {

class AppState {
 public:
  // Counts the launch; starts on the next turn of the main queue.
  AppState(const Platform& platform, const SettingsKeys& settings,
           ApplicationInformation information);
  ~AppState();
  AppState(const AppState&) = delete;
  AppState& operator=(const AppState&) = delete;

  // Made at the first use.
  Battery& battery();
  StatusItemController& statusItemController();

  TqMenu& menu() { return menu_; }

  // The application was opened again: shows a hidden item for five seconds. Nothing while start-up
  // may still refuse this computer. True: handled.
  bool reopen();

  // Opens the settings, in front of other applications. Nothing before start-up, as above.
  void showPreferencesWindow();

 private:
  void start();
  // Says why this computer is not served, and ends the application.
  void refuse(const std::string& title, const std::string& message);
  // Five seconds from now the item obeys the visibility rule again.
  void applyVisibilityLater();
  std::function<void()> guarded(std::function<void()> job);

  void connectSubscriptions();
  void connectPermissionRequests();
  void batteryDidChange(bool adapterDidChange);
  void rebuildMenu();

  void checkPercentageNotification();
  void checkFullyCharged();
  void checkLowBattery();
  LowBatteryAlert& lowBatteryAlert();

  Platform platform_;
  const SettingsKeys& settings_;
  ApplicationInformation information_;
  TqKit tqkit_;
  // Ends last of what follows: the subscriptions hold on to what is made of it.
  std::unique_ptr<Battery> battery_;
  TqMenu menu_;
  std::unique_ptr<StatusItemController> statusItem_;
  std::optional<Date> lastTimeShownLowBatteryWarning_;
  std::unique_ptr<LowBatteryAlert> lowBatteryAlert_;

  Feedback feedback_;
  Welcome welcome_;
  BatteryMenuActions menuActions_;
  std::unique_ptr<AlertHandle> refusal_;
  AutoStart autoStart_;
  std::unique_ptr<SettingsWindow> settingsWindow_;
  bool hasStarted_ = false;
  Cancellables cancellables_;
  // Tells queued jobs that this is still there.
  std::shared_ptr<AppState*> self_;
};

}  // namespace kelvane
