#include "notifications/battery_notices.h"

#include "battery/battery.h"
#include "kit/percent_digits.h"
#include "platform/user_notifications.h"
#include "settings/settings_keys.h"

namespace kelvane {

void checkPercentageNotification(const NoticeContext& context) {
  const double percentage = context.battery.percentage();
  if (percentage == context.battery.previousPercentage()) return;
  const Levels levels = context.battery.isPowerAdapterConnected()
                            ? context.settings.notifyAtPercentagesOnPower.get()
                            : context.settings.notifyAtPercentagesOnBattery.get();
  // Exact: a level is a whole percentage over 100, and so is the reading.
  if (!levels.contains(percentage)) return;
  // One identifier for all levels, so that a new notice replaces the one before.
  context.userNotifications.post(
      {.identifier = "batteryPercentage", .title = percentDigits(percentage) + "%"});
}

void checkFullyCharged(const NoticeContext& context) {
  if (!context.settings.notifyWhenFullyCharged.get()) return;
  if (!context.battery.isPowerAdapterConnected()) return;
  if (context.battery.percentage() == 1.0 && context.battery.previousPercentage() < 1.0)
    context.userNotifications.post({.identifier = "batteryFullyCharged",
                                    .title = "Fully Charged",
                                    .body = "Your Mac's battery is at 100%"});
}

}  // namespace kelvane
