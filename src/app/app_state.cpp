#include "app/app_state.h"

#include <functional>
#include <utility>
#include <variant>

#include "menu/battery_menu.h"
#include "platform/preferences.h"
#include "platform/run_loop.h"
#include "platform/user_notifications.h"
#include "reactive/scheduling.h"
#include "store/observe.h"

namespace kelvane {
namespace {

constexpr double kRevealSeconds = 5.0;
constexpr double kAppearanceDebounceSeconds = 1.0;

}  // namespace

AppState::AppState(const Platform& platform, const SettingsKeys& settings)
    : platform_(platform),
      settings_(settings),
      kitKeys_(platform.preferences),
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
        platform_.statusBar, platform_.preferences, kitKeys_,
        ItemContext{battery(), settings_, platform_.graphics}, menu_);
  return *statusItem_;
}

void AppState::start() {
  applyVisibilityLater();
  statusItemController().updateStatusItem();
  connectSubscriptions();
}

void AppState::applyVisibilityLater() {
  platform_.runLoop.asyncAfter(
      kRevealSeconds, guarded([this] { statusItemController().updateStatusItemVisibility(); }));
}

bool AppState::applicationShouldHandleReopen() {
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
  // The settings window applies the rule itself; this is for whoever else writes the key.
  cancellables_.push_back(
      receiveOnMainQueue(publisher(settings_.hideIconWhenOnPower, {}), runLoop)
          .subscribe([&item](const KeyChange<bool>&) { item.updateStatusItemVisibility(); }));
}

void AppState::batteryDidChange(bool adapterDidChange) {
  StatusItemController& item = statusItemController();
  if (!adapterDidChange) {
    item.updateStatusItem();
    return;
  }
  if (battery().isPowerAdapterConnected()) {
    item.updateStatusItemVisibility();
    platform_.runLoop.async(guarded([&item] { item.updateStatusItem(); }));
  } else {
    item.updateStatusItem();
    platform_.runLoop.async(guarded([&item] { item.updateStatusItemVisibility(); }));
  }
  platform_.userNotifications.removeAllDelivered();
}

void AppState::rebuildMenu() {
  rebuildBatteryMenu(menu_,
                     {battery(), platform_.runLoop, platform_.systemInfo, platform_.textFormats});
}

}  // namespace kelvane
