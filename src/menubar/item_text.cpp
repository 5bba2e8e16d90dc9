#include "menubar/item_text.h"

#include <cmath>
#include <string_view>
#include <utility>

#include "battery/battery.h"
#include "kit/percent_digits.h"
#include "menubar/colors.h"
#include "platform/graphics.h"
#include "settings/settings_keys.h"
#include "store/setting_key.h"

namespace kelvane {
namespace {

// A bolt in its monochrome form (U+26A1, U+FE0E) and a space.
constexpr const char* kOnPowerPrefix = "\u26A1\uFE0E ";
constexpr const char* kInfinity = "\u221E";

std::string withoutPercentSigns(std::string text) {
  constexpr std::string_view sign = kPercentSign;
  for (auto at = text.find(sign); at != std::string::npos; at = text.find(sign, at))
    text.erase(at, sign.size());
  return text;
}

}  // namespace

bool showsChargingIcon(const ItemContext& context) {
  return context.battery.isPowerAdapterConnected() && context.battery.percentage() != 1.0;
}

bool isFullyChargedOnPower(const ItemContext& context) {
  return context.battery.isPowerAdapterConnected() && context.battery.percentage() == 1.0;
}

const NamedColor* lowBatteryColor(const ItemContext& context) {
  if (context.battery.externalConnected() != false) return nullptr;
  switch (context.battery.warningLevel()) {
    case BatteryWarningLevel::early:
      return &namedColor("EarlyLowBattery");
    case BatteryWarningLevel::final:
      return &namedColor("FinalLowBattery");
    case BatteryWarningLevel::none:
      break;
  }
  return nullptr;
}

std::string percentageText(const ItemContext& context) {
  return percentDigits(context.battery.percentage()) + kPercentSign;
}

std::string timeOrFullText(const ItemContext& context) {
  return isFullyChargedOnPower(context) ? kInfinity : context.battery.timeRemainingText();
}

std::string withoutUnwantedSign(const ItemContext& context, std::string text) {
  if (context.settings.showPercentage.get() && !context.settings.showPercentageSignInIcon.get())
    return withoutPercentSigns(std::move(text));
  return text;
}

std::string plainItemText(const ItemContext& context) {
  return withoutUnwantedSign(context, context.settings.showPercentage.get()
                                          ? percentageText(context)
                                          : timeOrFullText(context));
}

std::string itemText(const ItemContext& context) {
  const std::string text = plainItemText(context);
  return context.battery.isPowerAdapterConnected() ? kOnPowerPrefix + text : text;
}

AttributedText makeTitle(const ItemContext& context, Appearance appearance) {
  AttributedText title{{{.text = itemText(context)}}};
  if (const NamedColor* color = lowBatteryColor(context))
    for (TextRun& run : title.runs) run.color = color->under(appearance);
  if (context.settings.smallMenuBarText.get())
    for (TextRun& run : title.runs) run.fontSize = context.graphics.smallSystemFontSize();
  return title;
}

double textItemLength(const ItemContext& context, const AttributedText& title) {
  return std::ceil(context.graphics.lineBounds(title).width) +
         (context.settings.smallMenuBarText.get() ? 3.0 : 8.0);
}

}  // namespace kelvane
