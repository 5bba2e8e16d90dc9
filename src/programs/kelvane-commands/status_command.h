// The command `kelvane status`: the battery in one line, for bars that run commands. Main thread.
#pragma once

#include <iosfwd>
#include <string>

#include "menu/battery_menu.h"
#include "menubar/item_context.h"
#include "platform/linux/power/linux_power_sources.h"

namespace kelvane {

// What such a bar shows. `styleClass` is one of "full", "charging", "plugged", "discharging", and
// on battery with a warning of the system "early" or "final".
struct StatusLine {
  std::string text;     // as the item in text mode
  std::string tooltip;  // the lines of the item's menu
  std::string styleClass;
  int percentage = 0;  // 0 to 100
  bool operator==(const StatusLine&) const = default;
};

StatusLine makeStatusLine(const ItemContext& item, const BatteryMenuContext& menu);

// {"text","tooltip","class","percentage"} on one line, as Waybar and i3status read it.
std::string jsonOf(const StatusLine& line);

// Prints the text, or the whole as JSON. Answers the exit code: 0, or 1 where there is no battery,
// with nothing but a line on `errors`, so that bars show nothing.
int runStatusCommand(const PowerOptions& power, bool asJson, std::ostream& out,
                     std::ostream& errors);

}  // namespace kelvane
