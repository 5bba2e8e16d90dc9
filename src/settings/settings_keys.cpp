#include "settings/settings_keys.h"

namespace kelvane {

SettingsKeys::SettingsKeys(Preferences& preferences)
    : showPercentage("showPercentage", true, preferences),
      showTimeOrPercentageOnHover("showTimeOrPercentageOnHover", true, preferences),
      largeIcon("largeIcon", false, preferences),
      oldIconStyle("oldIconStyle", false, preferences),
      showPercentageSignInIcon("showPercentageSignInIcon", true, preferences),
      textOnlyIcon("textOnlyIcon", false, preferences),
      smallMenuBarText("smallMenuBarText", true, preferences),
      hideIconWhenOnPower("hideIconWhenOnPower", false, preferences),
      notifyWhenFullyCharged("notifyWhenFullyCharged", false, preferences),
      notifyAtPercentagesOnPower("notifyAtPercentagesOnPower", {}, preferences),
      notifyAtPercentagesOnBattery("notifyAtPercentagesOnBattery", {}, preferences),
      notifyAtPercentages("notifyAtPercentages", {}, preferences),
      trayIconShape("trayIconShape", TrayIconShape::automatic, preferences),
      trayIconColor("trayIconColor", TrayIconColor::automatic, preferences) {}

}  // namespace kelvane
