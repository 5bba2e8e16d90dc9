// Every setting of the application: its name in the preferences, type and default. Making the
// object registers the defaults. Any thread; the preferences outlive the keys.
#pragma once

#include <array>
#include <set>
#include <string_view>

#include "store/setting_key.h"

namespace kelvane {

// Charge levels as fractions of one: 0.2 is 20 %.
using Levels = std::set<double>;

// The form of the item: what suits the bar, or one of the two whatever the bar.
enum class TrayIconShape { automatic, wide, square };
template <>
struct ChoiceNames<TrayIconShape> {
  static constexpr std::array<std::string_view, 3> values{"automatic", "wide", "square"};
};

// The colour of the item itself: what stands out from the bar, or one of the two.
enum class TrayIconColor { automatic, light, dark };
template <>
struct ChoiceNames<TrayIconColor> {
  static constexpr std::array<std::string_view, 3> values{"automatic", "light", "dark"};
};

struct SettingsKeys {
  explicit SettingsKeys(Preferences& preferences);

  // The item shows the charge; false: the time remaining.
  const SettingKey<bool> showPercentage;
  // Hovering over the item shows the other of the two.
  const SettingKey<bool> showTimeOrPercentageOnHover;
  const SettingKey<bool> largeIcon;
  const SettingKey<bool> oldIconStyle;
  const SettingKey<bool> showPercentageSignInIcon;
  // The item is text instead of a glyph.
  const SettingKey<bool> textOnlyIcon;
  // The smaller text size of the text-only item.
  const SettingKey<bool> smallMenuBarText;
  const SettingKey<bool> hideIconWhenOnPower;
  const SettingKey<bool> notifyWhenFullyCharged;
  // The levels at which to notify while charging, and while on battery.
  const SettingKey<Levels> notifyAtPercentagesOnPower;
  const SettingKey<Levels> notifyAtPercentagesOnBattery;
  // The one list of older versions; only the migration reads it.
  const SettingKey<Levels> notifyAtPercentages;
  // For bars that do not tell, or tell wrongly, what suits them.
  const SettingKey<TrayIconShape> trayIconShape;
  const SettingKey<TrayIconColor> trayIconColor;

  // Calls `visit` with each key in the order above.
  template <typename Visitor>
  void forEach(Visitor&& visit) const {
    visit(showPercentage);
    visit(showTimeOrPercentageOnHover);
    visit(largeIcon);
    visit(oldIconStyle);
    visit(showPercentageSignInIcon);
    visit(textOnlyIcon);
    visit(smallMenuBarText);
    visit(hideIconWhenOnPower);
    visit(notifyWhenFullyCharged);
    visit(notifyAtPercentagesOnPower);
    visit(notifyAtPercentagesOnBattery);
    visit(notifyAtPercentages);
    visit(trayIconShape);
    visit(trayIconColor);
  }
};

}  // namespace kelvane
