// A Linux desktop as the application's platform: every adaptor, wired together. Main thread.
#pragma once

#include <memory>

#include <glib.h>

#include "platform/linux/desktop/linux_login_items.h"
#include "platform/linux/desktop/linux_system_info.h"
#include "platform/linux/desktop/linux_text_formats.h"
#include "platform/linux/desktop/linux_workspace.h"
#include "platform/linux/drawing/font_faces.h"
#include "platform/linux/drawing/linux_graphics.h"
#include "platform/linux/glib/bus_connection.h"
#include "platform/linux/glib/glib_run_loop.h"
#include "platform/linux/notifications/linux_user_notifications.h"
#include "platform/linux/notifications/notice_board.h"
#include "platform/linux/power/linux_power_sources.h"
#include "platform/linux/power/sysfs_device_registry.h"
#include "platform/linux/preferences/plist_preferences.h"
#include "platform/linux/tray/linux_status_bar.h"
#include "platform/linux/windows/linux_windows.h"
#include "platform/platform.h"

namespace kelvane {

class LinuxComputer {
 public:
  // The run loop and the session bus outlive this.
  LinuxComputer(GlibRunLoop& runLoop, BusConnection* sessionBus, const PowerOptions& power);

  Platform platform() {
    return {registry,      powerSources, preferences, runLoop,   statusBar,  graphics,
            notifications, windows,      loginItems,  workspace, systemInfo, textFormats};
  }

  GlibRunLoop& runLoop;
  PlistPreferences preferences;
  // One reading in a turn for both.
  std::shared_ptr<TurnSupplies> supplies;
  SysfsDeviceRegistry registry;
  LinuxPowerSources powerSources;
  FontFaces fonts;
  LinuxGraphics graphics{fonts};
  // Where the user last clicked the item, if the host tells such places.
  std::optional<Point> itemPlace;
  LinuxStatusBar statusBar;
  LinuxSystemInfo systemInfo;
  LinuxTextFormats textFormats;
  NoticeBoard noticeBoard;
  LinuxUserNotifications notifications{noticeBoard};
  LinuxWindows windows;
  LinuxLoginItems loginItems;
  LinuxWorkspace workspace;
};

}  // namespace kelvane
