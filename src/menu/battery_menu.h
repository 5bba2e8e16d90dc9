// What the item's menu says about the battery. Main thread; read afresh at each call.
#pragma once

namespace kelvane {

class Battery;
class RunLoop;
class SystemInfo;
class TextFormats;
class TqMenu;

struct BatteryMenuContext {
  const Battery& battery;
  RunLoop& runLoop;
  SystemInfo& systemInfo;
  TextFormats& textFormats;
};

// Replaces the menu's lines: the charge, the times, the power source, and the two lines that show
// only while Option is held.
void rebuildBatteryMenu(TqMenu& menu, const BatteryMenuContext& context);

}  // namespace kelvane
