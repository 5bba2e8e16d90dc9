#include "notifications/low_battery_alert.h"

#include <chrono>
#include <utility>

#include "battery/battery.h"

namespace kelvane {
namespace {

constexpr double kShowAgainAfter = 600;       // seconds
constexpr double kAdapterPollInterval = 0.2;  // seconds
constexpr double kChargedAbove = 0.2;

}  // namespace

LowBatteryAlert::LowBatteryAlert(const Battery& battery, Windows& windows, RunLoop& runLoop,
                                 std::function<Picture()> icon)
    : battery_(battery), windows_(windows), runLoop_(runLoop), icon_(std::move(icon)) {}

void LowBatteryAlert::check(std::optional<Date>& lastTimeShown) {
  // An adapter that can't be read is no reason for an alert.
  const bool isOnBattery = !battery_.externalConnected().value_or(true);
  if (!alert_ && isOnBattery && battery_.warningLevel() == BatteryWarningLevel::final &&
      isTimeToShow(lastTimeShown)) {
    show(lastTimeShown);
  } else {
    clearWhenCharged(lastTimeShown);
  }
}

// A moment that has passed lies a negative interval from now, so once the alert was shown only
// clearing the moment lets it be shown again: once in a discharge, and that is meant.
bool LowBatteryAlert::isTimeToShow(const std::optional<Date>& lastTimeShown) const {
  if (!lastTimeShown) return true;
  const std::chrono::duration<double> sinceNow = *lastTimeShown - runLoop_.now();
  return sinceNow.count() > kShowAgainAfter;
}

void LowBatteryAlert::show(std::optional<Date>& lastTimeShown) {
  lastTimeShown = runLoop_.now();
  windows_.activate();
  // A modal alert holds the power events back, so the adapter has to be looked at.
  adapterPoll_ = runLoop_.startTimer(kAdapterPollInterval, true, [this] {
    if (!battery_.isPowerAdapterConnected()) return;
    adapterPoll_.reset();
    alert_->abort();
  });
  alert_ = windows_.alert(
      {.title = "Your Mac is running out of battery and will soon sleep unless plugged into a "
                "power outlet.",
       .style = AlertStyle::warning,
       .icon = icon_()},
      [this, &lastTimeShown, alive = std::weak_ptr(isAlive_)](int) {
        if (alive.expired()) return;
        adapterPoll_.reset();
        alert_.reset();
        clearWhenCharged(lastTimeShown);
      });
}

void LowBatteryAlert::clearWhenCharged(std::optional<Date>& lastTimeShown) const {
  if (battery_.percentage() > kChargedAbove) lastTimeShown.reset();
}

}  // namespace kelvane
