// The item's menu: what it says about the battery, and the application's commands. Main thread;
// read afresh at each call.
#pragma once

#include <functional>

namespace kelvane {

class Battery;
class RunLoop;
class SystemInfo;
class TextFormats;
class TqMenu;

// What the menu's commands do; each is called on the main queue or from the menu's own event. The
// lines keep copies; an empty one does nothing.
struct BatteryMenuActions {
  std::function<void()> showPreferencesWindow;  // makes the application the active one, too
  std::function<void()> openBatterySettings;
  std::function<void()> showAbout;
  std::function<void()> sendFeedback;
  std::function<void()> openFAQ;
};

// Needed during the call only, but for the run loop, which outlives the lines.
struct BatteryMenuContext {
  const Battery& battery;
  RunLoop& runLoop;
  SystemInfo& systemInfo;
  TextFormats& textFormats;
  const BatteryMenuActions& actions;
};

// Replaces the menu's lines: the charge, the times, the power source, the two lines that show only
// while Option is held, and the commands, of which the rarer ones are in a submenu.
void rebuildBatteryMenu(TqMenu& menu, const BatteryMenuContext& context);

}  // namespace kelvane
