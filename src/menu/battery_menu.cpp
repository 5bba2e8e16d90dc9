#include "menu/battery_menu.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "battery/battery.h"
#include "kit/percent_digits.h"
#include "menu/callback_menu_item.h"
#include "menu/tq_menu.h"
#include "platform/run_loop.h"
#include "platform/system_info.h"
#include "platform/text_formats.h"

namespace kelvane {
namespace {

constexpr double kLongestDuration = 72000;  // 20 hours
constexpr double kPercentageSize = 15;

MenuLine disabledLine(std::string title) { return {.title = std::move(title), .isEnabled = false}; }

void addTimeLines(TqMenu& menu, const BatteryMenuContext& context) {
  const bool isOnPower = context.battery.externalConnected().value_or(true);
  const std::int64_t minutes = context.battery.timeRemaining();
  const double seconds = static_cast<double>(minutes) * 60;
  const std::string duration =
      seconds >= kLongestDuration
          ? "20h+"
          : context.textFormats.abbreviatedDuration(seconds).value_or("🤷🏻♂️");
  menu.addItem(disabledLine(duration + (isOnPower ? " Until Full" : " Remaining")));
  const Date end = context.runLoop.now() + std::chrono::minutes(minutes);
  menu.addItem(
      disabledLine((isOnPower ? "Full At " : "Empty At ") + context.textFormats.shortTime(end)));
}

void addChargeLines(TqMenu& menu, const BatteryMenuContext& context) {
  const bool isConnected = context.battery.isPowerAdapterConnected();
  const double fraction = context.battery.percentage();
  if (isConnected && fraction == 1.0) {
    menu.addItem(disabledLine("Fully Charged"));
    return;
  }
  const std::string text = percentDigits(fraction) + "\uFE6A";
  MenuLine percentage = disabledLine(text);
  percentage.attributedTitle = AttributedText{{{.text = text, .fontSize = kPercentageSize}}};
  menu.addItem(std::move(percentage));
  if (isConnected && !context.battery.isCharging())
    menu.addItem(disabledLine("Not Charging"));
  else if (context.battery.timeRemainingEstimate() == kTimeRemainingUnknown)
    menu.addItem(disabledLine("Calculating Time Remaining…"));
  else
    addTimeLines(menu, context);
}

bool showsLowPowerMode(SystemInfo& systemInfo) {
  // Macs have the mode from this version on; where there is no such version, whoever has it tells.
  const auto version = systemInfo.macOSVersion();
  return (!version || version->major >= 12) && systemInfo.isLowPowerModeEnabled();
}

// A line that shows only while Option is held, in place of a placeholder without height.
void addOptionLine(TqMenu& menu, std::string title) {
  menu.addItem({.kind = MenuLine::Kind::placeholder, .isEnabled = false});
  CallbackMenuItem item(std::move(title), [] {}, {.option = true});
  item.setAlternate(true);
  item.setEnabled(false);
  menu.addItem(std::move(item).line());
}

void addCommand(TqMenu& menu, std::string title, CallbackMenuItem::Callback callback,
                KeyEquivalent keyEquivalent = {}) {
  menu.addItem(
      CallbackMenuItem(std::move(title), std::move(callback), std::move(keyEquivalent)).line());
}

std::shared_ptr<TqMenu> makeMoreMenu(const BatteryMenuActions& actions) {
  auto more = std::make_shared<TqMenu>();
  addCommand(*more, "Battery Preferences…", actions.openBatterySettings);
  more->addSeparator();
  addCommand(*more, "About", actions.showAbout);
  more->addSeparator();
  addCommand(*more, "Send Feedback…", actions.sendFeedback);
  more->addSeparator();
  addCommand(*more, "FAQ", actions.openFAQ);
  return more;
}

void addCommandLines(TqMenu& menu, const BatteryMenuContext& context) {
  // Later, so that the menu is gone before a window takes its place.
  const auto showPreferences = [&runLoop = context.runLoop,
                                show = context.actions.showPreferencesWindow] {
    if (show) runLoop.async(show);
  };
  addCommand(menu, "Preferences…", showPreferences, {.key = ",", .command = true});
  menu.addItem({.title = "More", .submenu = makeMoreMenu(context.actions)});
}

}  // namespace

void rebuildBatteryMenu(TqMenu& menu, const BatteryMenuContext& context) {
  menu.removeAllItems();
  addChargeLines(menu, context);
  menu.addItem(disabledLine(context.battery.powerSourceName()));
  if (showsLowPowerMode(context.systemInfo)) menu.addItem(disabledLine("Low Power Mode Enabled"));
  addOptionLine(menu, "Condition: " + context.battery.batteryHealth());
  addOptionLine(
      menu, "Health: " + context.textFormats.percent(context.battery.healthRatio()).value_or(""));
  menu.addSeparator();
  addCommandLines(menu, context);
  menu.addSeparator();
  menu.addSeparator();
}

}  // namespace kelvane
