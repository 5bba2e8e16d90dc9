#include "programs/kelvane-commands/status_command.h"

#include <algorithm>
#include <cmath>
#include <ostream>
#include <utility>

#include <nlohmann/json.hpp>

#include "battery/battery.h"
#include "battery/has_battery.h"
#include "menu/tq_menu.h"
#include "menubar/item_text.h"
#include "platform/linux/desktop/linux_system_info.h"
#include "platform/linux/desktop/linux_text_formats.h"
#include "platform/linux/drawing/linux_graphics.h"
#include "platform/linux/preferences/plist_preferences.h"
#include "programs/kelvane-commands/power_reading.h"
#include "programs/kelvane/foreign_text.h"
#include "settings/settings_keys.h"

namespace kelvane {
namespace {

std::string styleClassOf(const ItemContext& item) {
  if (isFullyChargedOnPower(item)) return "full";
  if (item.battery.isPowerAdapterConnected())
    return item.battery.isCharging() ? "charging" : "plugged";
  switch (item.battery.warningLevel()) {
    case BatteryWarningLevel::early:
      return "early";
    case BatteryWarningLevel::final:
      return "final";
    case BatteryWarningLevel::none:
      break;
  }
  return "discharging";
}

}  // namespace

StatusLine makeStatusLine(const ItemContext& item, const BatteryMenuContext& menuContext) {
  TqMenu menu;
  rebuildBatteryMenu(menu, menuContext);
  std::string tooltip;
  for (const MenuLine& line : menu.lines()) {
    // What the menu says; its commands are enabled.
    if (line.kind != MenuLine::Kind::item || line.isEnabled) continue;
    if (!tooltip.empty()) tooltip += '\n';
    tooltip += line.title;
  }
  const double level = std::clamp(item.battery.percentage(), 0.0, 1.0);
  return {itemText(item), std::move(tooltip), styleClassOf(item),
          static_cast<int>(std::lround(level * 100))};
}

std::string jsonOf(const StatusLine& line) {
  const nlohmann::ordered_json json{{"text", line.text},
                                    {"tooltip", line.tooltip},
                                    {"class", line.styleClass},
                                    {"percentage", line.percentage}};
  return json.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

int runStatusCommand(const PowerOptions& power, bool asJson, std::ostream& out,
                     std::ostream& errors) {
  PowerReading reading(power);
  if (!hasBattery(reading.powerSources)) {
    errors << "kelvane: this computer has no battery" << std::endl;
    return 1;
  }
  PlistPreferences preferences;
  const SettingsKeys settings(preferences);
  const Battery battery(reading.registry, reading.powerSources, reading.loop);
  FontFaces fonts;
  LinuxGraphics graphics(fonts);
  LinuxSystemInfo systemInfo;
  LinuxTextFormats textFormats;
  StatusLine line = makeStatusLine({battery, settings, graphics},
                                   {battery, reading.loop, systemInfo, textFormats, {}});
  line.text = replaceUncoveredCharacters(fonts, std::move(line.text));
  line.tooltip = replaceUncoveredCharacters(fonts, std::move(line.tooltip));
  out << (asJson ? jsonOf(line) : line.text) << std::endl;
  return 0;
}

}  // namespace kelvane
