// The whole in-memory computer: one of each platform part, wired together. Main thread.
#pragma once

#include "platform/memory/memory_desktop.h"
#include "platform/memory/memory_graphics.h"
#include "platform/memory/memory_power.h"
#include "platform/memory/memory_preferences.h"
#include "platform/memory/memory_run_loop.h"
#include "platform/memory/memory_status_bar.h"
#include "platform/platform.h"
#include "platform/portable/text_formats.h"

namespace kelvane {

class MemoryComputer {
 public:
  Platform platform() {
    return {registry,      powerSources, preferences, runLoop,   statusBar,  graphics,
            notifications, windows,      loginItems,  workspace, systemInfo, textFormats};
  }

  // Puts the battery into this state without telling anybody.
  void set(const MemoryBattery& battery) { battery.apply(registry, powerSources); }
  // The same, and everybody hears of it.
  void change(const MemoryBattery& battery) {
    set(battery);
    powerSources.notify();
    runLoop.run();
  }

  MemoryRunLoop runLoop;
  MemoryDeviceRegistry registry;
  MemoryPowerSources powerSources;
  MemoryPreferences preferences;
  MemoryStatusBar statusBar;
  MemoryGraphics graphics;
  MemoryUserNotifications notifications;
  MemoryWindows windows{runLoop};
  MemoryLoginItems loginItems;
  MemoryWorkspace workspace;
  MemorySystemInfo systemInfo;
  PortableTextFormats textFormats{{}};  // 24 hours, universal time
};

}  // namespace kelvane
