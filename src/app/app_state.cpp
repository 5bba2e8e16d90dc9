#include "app/app_state.h"

#include <functional>
#include <utility>
#include <variant>

#include "battery/has_battery.h"
#include "menubar/pictures.h"
#include "notifications/battery_notices.h"
#include "platform/preferences.h"
#include "platform/run_loop.h"
#include "platform/system_info.h"
#include "platform/user_notifications.h"
#include "platform/windows.h"
#include "platform/workspace.h"
#include "reactive/scheduling.h"
#include "store/observe.h"

namespace kelvane {
namespace {

constexpr double kRevealSeconds = 5.0;
constexpr double kAppearanceDebounceSeconds = 1.0;
constexpr SystemVersion kFirstRefusedSystem{12, 0, 0};
constexpr int kRefused = 1;

}  // namespace

AppState::AppState(const Platform& platform, const SettingsKeys& settings,
                   ApplicationInformation information)
    : platform_(platform),
      settings_(settings),
      information_(std::move(information)),
      tqkit_(platform.preferences, platform.runLoop),
      feedback_(platform, information_),
      welcome_(platform, information_.name, tqkit_.isFirstLaunch()),
      menuActions_{
          .showPreferencesWindow = [this] { showPreferencesWindow(); },
          .openBatterySettings = [this] { platform_.workspace.openBatterySettings(); },
          .showAbout = [this] { feedback_.showAbout(); },
          .sendFeedback = [this] { feedback_.sendFeedback(); },
          .openFAQ = [this] { feedback_.openFAQ(); },
      },
      autoStart_(platform.loginItems, information_.identifier),
      self_(std::make_shared<AppState*>(this)) {
  platform_.runLoop.async(guarded([this] { start(); }));
}

AppState::~AppState() = default;

// Queued jobs may outlive this object.
std::function<void()> AppState::guarded(std::function<void()> job) {
  return [alive = std::weak_ptr(self_), job = std::move(job)] {
    if (alive.lock()) job();
  };
}

Battery& AppState::battery() {
  if (!battery_)
    battery_ = std::make_unique<Battery>(platform_.deviceRegistry, platform_.powerSources,
                                         platform_.runLoop);
  return *battery_;
}

StatusItemController& AppState::statusItemController() {
  if (!statusItem_)
    statusItem_ = std::make_unique<StatusItemController>(
        platform_.statusBar, platform_.preferences, tqkit_.keys(),
        ItemContext{battery(), settings_, platform_.graphics}, menu_);
  return *statusItem_;
}

LowBatteryAlert& AppState::lowBatteryAlert() {
  if (!lowBatteryAlert_)
    lowBatteryAlert_ =
        std::make_unique<LowBatteryAlert>(battery(), platform_.windows, platform_.runLoop,
                                          [] { return namedPicture("LowBatteryIcon"); });
  return *lowBatteryAlert_;
}

void AppState::start() {
  if (const auto version = platform_.systemInfo.macOSVersion(); version >= kFirstRefusedSystem) {
    const std::string& name = information_.name;
    refuse("This version of " + name +
               " is meant for macOS 11 and older only. For macOS 12 and later, get a newer version "
               "of " +
               name + " on the App Store.",
           "");
    return;
  }
  if (!hasBattery(platform_.powerSources)) {
    refuse("This Mac is not supported.", "Kelvane is intended for Mac laptops with a battery.");
    return;
  }
  hasStarted_ = true;
  applyVisibilityLater();
  statusItemController().updateStatusItem();
  connectSubscriptions();
  welcome_.showWelcome(statusItemController().statusItem());
}

void AppState::refuse(const std::string& title, const std::string& message) {
  platform_.windows.activate();
  refusal_ =
      platform_.windows.alert({.title = title, .message = message, .buttons = {"Quit"}},
                              [&runLoop = platform_.runLoop](int) { runLoop.terminate(kRefused); });
}

void AppState::applyVisibilityLater() {
  platform_.runLoop.asyncAfter(
      kRevealSeconds, guarded([this] { statusItemController().updateStatusItemVisibility(); }));
}

bool AppState::reopen() {
  if (!hasStarted_) return true;
  statusItemController().setVisiblePreservingPosition(true);
  applyVisibilityLater();
  return true;
}

void AppState::connectSubscriptions() {
  StatusItemController& item = statusItemController();
  RunLoop& runLoop = platform_.runLoop;
  const ObservationOptions initially{.initial = true};

  cancellables_.push_back(
      menu_.isOpenPublisher().subscribe([&item](bool) { item.updateStatusItem(); }));
  cancellables_.push_back(
      menu_.needsUpdatePublisher().subscribe([this](std::monostate) { rebuildMenu(); }));
  cancellables_.push_back(battery().didChangePublisher().dropFirst().subscribe(
      [this](bool adapterDidChange) { batteryDidChange(adapterDidChange); }));
  cancellables_.push_back(
      receiveOnMainQueue(publisher(settings_.showTimeOrPercentageOnHover, initially), runLoop)
          .subscribe([&item](const KeyChange<bool>& change) {
            if (change.newValue) item.installHoverView();
          }));
  const std::vector<SuiteKeyPair> appearanceKeys{settings_.showPercentage,
                                                 settings_.textOnlyIcon,
                                                 settings_.largeIcon,
                                                 settings_.oldIconStyle,
                                                 settings_.showPercentageSignInIcon,
                                                 settings_.smallMenuBarText};
  cancellables_.push_back(receiveOnMainQueue(publisher(appearanceKeys, initially), runLoop)
                              .subscribe([&item](SettingsChanged) { item.updateStatusItem(); }));
  cancellables_.push_back(receiveOnMainQueue(debounce(item.effectiveAppearancePublisher(),
                                                      kAppearanceDebounceSeconds, runLoop),
                                             runLoop)
                              .subscribe([&item](std::monostate) { item.updateStatusItem(); }));
  cancellables_.push_back(
      receiveOnMainQueue(
          publisher(std::vector<SuiteKeyPair>{settings_.trayIconShape, settings_.trayIconColor},
                    {}),
          runLoop)
          .subscribe([&item](SettingsChanged) {
            item.applyTraySettings();
            item.updateStatusItem();
          }));
  // The settings window applies the rule itself; this is for whoever else writes the key.
  cancellables_.push_back(
      receiveOnMainQueue(publisher(settings_.hideIconWhenOnPower, {}), runLoop)
          .subscribe([&item](const KeyChange<bool>&) { item.updateStatusItemVisibility(); }));
  connectPermissionRequests();
}

void AppState::connectPermissionRequests() {
  const ObservationOptions initially{.initial = true};
  const auto ask = [this](bool isWanted) {
    if (isWanted) platform_.userNotifications.requestAuthorization();
  };
  cancellables_.push_back(
      publisher(settings_.notifyWhenFullyCharged, initially)
          .subscribe([ask](const KeyChange<bool>& change) { ask(change.newValue); }));
  for (const SettingKey<Levels>* levels :
       {&settings_.notifyAtPercentagesOnBattery, &settings_.notifyAtPercentagesOnPower})
    cancellables_.push_back(
        publisher(*levels, initially).subscribe([ask](const KeyChange<Levels>& change) {
          ask(!change.newValue.empty());
        }));
}

void AppState::batteryDidChange(bool adapterDidChange) {
  StatusItemController& item = statusItemController();
  if (!adapterDidChange) {
    item.updateStatusItem();
  } else {
    if (battery().isPowerAdapterConnected()) {
      item.updateStatusItemVisibility();
      platform_.runLoop.async(guarded([&item] { item.updateStatusItem(); }));
    } else {
      item.updateStatusItem();
      platform_.runLoop.async(guarded([&item] { item.updateStatusItemVisibility(); }));
    }
    platform_.userNotifications.removeAllDelivered();
  }
  platform_.runLoop.async(guarded([this] { checkLowBattery(); }));
  checkFullyCharged();
  checkPercentageNotification();
}

void AppState::checkPercentageNotification() {
  kelvane::checkPercentageNotification({battery(), settings_, platform_.userNotifications});
}

void AppState::checkFullyCharged() {
  kelvane::checkFullyCharged({battery(), settings_, platform_.userNotifications});
}

void AppState::checkLowBattery() { lowBatteryAlert().check(lastTimeShownLowBatteryWarning_); }

void AppState::rebuildMenu() {
  rebuildBatteryMenu(menu_, {battery(), platform_.runLoop, platform_.systemInfo,
                             platform_.textFormats, menuActions_});
}

void AppState::showPreferencesWindow() {
  if (!hasStarted_) return;
  platform_.windows.activate();
  if (!settingsWindow_)
    settingsWindow_ = std::make_unique<SettingsWindow>(
        platform_.windows, platform_.runLoop, settings_, autoStart_, information_.name,
        [this] { statusItemController().updateStatusItemVisibility(); });
  settingsWindow_->show();
}

}  // namespace kelvane
