// A Mac as the application's platform: every adaptor, wired together. Main thread.
#pragma once

#include "platform/macos/drawing/mac_graphics.h"
#include "platform/macos/login/mac_login_items.h"
#include "platform/macos/notifications/mac_user_notifications.h"
#include "platform/macos/power/iokit_registry.h"
#include "platform/macos/power/iops_power_sources.h"
#include "platform/macos/preferences/mac_preferences.h"
#include "platform/macos/run_loop/mac_run_loop.h"
#include "platform/macos/status_bar/mac_status_bar.h"
#include "platform/macos/system/mac_system_info.h"
#include "platform/macos/system/mac_text_formats.h"
#include "platform/macos/system/mac_workspace.h"
#include "platform/macos/windows/mac_windows.h"
#include "platform/platform.h"

namespace kelvane {

class MacComputer {
 public:
  MacComputer();

  Platform platform() {
    return {registry,      powerSources, preferences, runLoop,   statusBar,  graphics,
            notifications, windows,      loginItems,  workspace, systemInfo, textFormats};
  }

  MacRunLoop runLoop;
  MacPreferences preferences;
  IokitRegistry registry;
  IopsPowerSources powerSources;
  MacGraphics graphics;
  MacStatusBar statusBar;
  MacSystemInfo systemInfo;
  MacTextFormats textFormats;
  MacUserNotifications notifications;
  MacWindows windows;
  MacLoginItems loginItems;
  MacWorkspace workspace;
};

}  // namespace kelvane
