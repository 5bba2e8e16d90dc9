// Every setting of the application: its name in the preferences, type and default. Making the
// object registers the defaults. Any thread; the preferences outlive the keys.
#pragma once

#include <set>

#include "store/setting_key.h"

namespace kelvane {

// Charge levels as fractions of one: 0.2 is 20 %.
using Levels = std::set<double>;

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
  }
};

}  // namespace kelvane
