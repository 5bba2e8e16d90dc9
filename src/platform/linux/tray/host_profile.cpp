#include "platform/linux/tray/host_profile.h"

#include <algorithm>
#include <array>

namespace kelvane {
namespace {

using Shape = Slot::Shape;

constexpr Slot square(double height) { return {Shape::square, height, 1, false}; }
constexpr Slot wide(double height) { return {Shape::wide, height, 1, false}; }

// Every host takes one picture of exactly its size as it is.
constexpr std::array kProfiles = {
    // As careful as possible: a picture keeps legible in a square, and most hosts squeeze.
    HostProfile{.host = TrayHost::unknown, .slot = square(22)},
    // Fits into 22 by 22, 44x22 becomes 22x11. Opens the menu itself. The panel has a switch for
    // its dark look, the theme decides otherwise. Reads all properties for each signal.
    HostProfile{.host = TrayHost::xfce,
                .slot = square(22),
                .barColor = BarColor::panelSettings,
                .callsActivate = false,
                .givesRootCoordinates = true,
                .readsAllAtOnce = true},
    // Fits into 22 by 22, whatever the scale. Activate on every left click, in root coordinates.
    // The panel's theme is independent of the colour scheme. Its menus are Qt's. A tool tip with
    // tags in it is taken for markup, one without is plain, entities and all.
    HostProfile{.host = TrayHost::lxqt,
                .slot = square(22),
                .picksBestSize = true,
                .givesRootCoordinates = true,
                .usesQtKeyNames = true},
    // Fills the panel's height, 24 by default, with the picture's own width. Activate says (0, 25)
    // wherever the item is. Reads the whole tool tip as markup. The panel follows the theme.
    HostProfile{.host = TrayHost::mate,
                .slot = wide(24),
                .barColor = BarColor::colorScheme,
                .readsMarkupInToolTip = true},
    // As high as the `icon-size` of its configuration, with the picture's own width. Opens the menu
    // itself. Coloured by a style sheet.
    HostProfile{.host = TrayHost::waybar,
                .slot = wide(22),
                .callsActivate = false,
                .readsMarkupInToolTip = true},
    // Fits into 22 by 22. Activate on every left click, in root coordinates. The watcher lives in
    // the KDE daemon, the tray in the shell; both follow the colour scheme.
    HostProfile{.host = TrayHost::plasma,
                .slot = square(22),
                .barColor = BarColor::colorScheme,
                .givesRootCoordinates = true,
                .usesQtKeyNames = true},
    // Squeezes everything into 16 by 16, the aspect is lost. Shows a label beside the icon. Opens
    // the menu itself, a moment later if the item has an Activate to wait for. The top bar is dark.
    HostProfile{.host = TrayHost::gnome,
                .slot = {Shape::square, 16, 1, true},
                .barColor = BarColor::alwaysDark,
                .picksBestSize = true,
                .callsActivate = false,
                .givesRootCoordinates = true},
    // From its sources, not measured: keeps a picture's width, calls Activate. The panel's theme is
    // independent of the colour scheme.
    HostProfile{.host = TrayHost::cinnamon, .slot = wide(22)},
    // From its sources, not measured: takes square pictures only, knows no menus, calls ContextMenu
    // or Activate. Coloured by its configuration.
    HostProfile{.host = TrayHost::swaybar, .slot = square(22)},
};

struct Process {
  std::string_view name;
  TrayHost host;
};
constexpr Process kProcesses[] = {
    {"xfce4-panel", TrayHost::xfce},
    {"lxqt-panel", TrayHost::lxqt},
    {"mate-panel", TrayHost::mate},
    {"notification-ar", TrayHost::mate},  // the notification area as a process of its own, cut off
    {"waybar", TrayHost::waybar},
    {"kded5", TrayHost::plasma},
    {"kded6", TrayHost::plasma},
    {"plasmashell", TrayHost::plasma},
    {"gnome-shell", TrayHost::gnome},
    {"xapp-sn-watcher", TrayHost::cinnamon},
    {"swaybar", TrayHost::swaybar},
};

// xfce4-panel runs its plugins as processes called "panel-NUMBER-systray", or "-statusnotifier" in
// older versions.
bool isXfcePlugin(std::string_view name) {
  constexpr std::string_view kStart = "panel-";
  if (!name.starts_with(kStart)) return false;
  name.remove_prefix(kStart.size());
  const std::size_t digits = std::min(name.find_first_not_of("0123456789"), name.size());
  if (digits == 0 || digits == name.size() || name[digits] != '-') return false;
  name.remove_prefix(digits + 1);
  for (const std::string_view plugin : {"systray", "statusnotifier"})
    if (name.size() >= 3 && plugin.starts_with(name)) return true;
  return false;
}

}  // namespace

TrayHost hostOfProcess(std::string_view processName) {
  if (isXfcePlugin(processName)) return TrayHost::xfce;
  // Some distributions start a program as ".NAME-wrapped", cut off after 15 bytes.
  const bool isWrapped = processName.starts_with('.');
  if (isWrapped) processName.remove_prefix(1);
  for (const auto& [name, host] : kProcesses) {
    if (processName == name) return host;
    if (isWrapped && processName.starts_with(name) && processName[name.size()] == '-') return host;
    if (isWrapped && processName.size() == 14 && name.starts_with(processName)) return host;
  }
  return TrayHost::unknown;
}

const HostProfile& profileOf(TrayHost host) {
  for (const HostProfile& profile : kProfiles)
    if (profile.host == host) return profile;
  return kProfiles.front();
}

}  // namespace kelvane
