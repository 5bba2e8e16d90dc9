#include "platform/linux/desktop/tray_remedy.h"

#include <algorithm>
#include <array>
#include <system_error>

#include <glib.h>

#include "platform/linux/desktop/desktop_session.h"
#include "platform/linux/desktop/linux_system_info.h"
#include "platform/linux/files/safe_files.h"

namespace kelvane {
namespace {

constexpr std::size_t kMostBytes = 64 * 1024;

struct Desktops {
  std::array<std::string_view, 8> names;  // in XDG_CURRENT_DESKTOP, in lower case
  std::string_view remedy;
};

constexpr Desktops kDesktops[] = {
    {{"xfce"}, "Add the item “Status Tray Plugin” to a panel (Panel › Add New Items…)."},
    {{"mate"}, "Add the applet “Notification Area” to a panel (right click › Add to Panel…)."},
    {{"lxqt"}, "Add the plugin “Status Notifier” to a panel (Configure Panel › Widgets)."},
    // The daemon brings the tray, the widget shows what is in it.
    {{"kde"},
     "Add the widget “System Tray” to a panel, and see in System Settings › Background Services "
     "that “Status Notifier Manager” runs."},
    {{"x-cinnamon", "cinnamon"}, "Add the applet “XApp Status Applet” to a panel."},
    {{"budgie"}, "Add the applet “System Tray” to a panel."},
    {{"pantheon"},
     "The panel has no tray of its own; the indicator wingpanel-indicator-ayatana adds one."},
    // swaybar shows items, but not their menus.
    {{"sway"}, "Run waybar with its module “tray”, in place of swaybar or beside it."},
    {{"hyprland", "river", "niri", "labwc", "wayfire", "wlroots", "dwl"},
     "Run waybar with its module “tray”, or another bar that shows StatusNotifierItems."},
    {{"i3", "awesome", "bspwm", "dwm", "herbstluftwm"},
     "The window manager’s bar shows XEmbed icons only: run snixembed, which makes such icons of "
     "tray items, or a panel with a tray, such as xfce4-panel."},
};

constexpr std::string_view kAnywhere =
    "Run a panel that shows StatusNotifierItems: on X11 for example xfce4-panel, on Wayland waybar "
    "with its module “tray”.";

// The extension has one package name everywhere, but Debian gave it another identifier.
struct Packages {
  std::array<std::string_view, 3> distributions;
  std::string_view install;
  std::string_view extension;
};
constexpr std::string_view kUbuntuExtension = "ubuntu-appindicators@ubuntu.com";
constexpr std::string_view kExtension = "appindicatorsupport@rgcjonas.gmail.com";
constexpr Packages kPackages[] = {
    {{"debian", "ubuntu"}, "sudo apt install", kUbuntuExtension},
    {{"fedora", "rhel"}, "sudo dnf install", kExtension},
    {{"arch"}, "sudo pacman -S", kExtension},
};

std::string lowered(const std::string& text) {
  std::string result = text;
  std::ranges::transform(result, result.begin(), g_ascii_tolower);
  return result;
}

template <typename Names>
bool contains(const Names& names, const std::string& name) {
  return !name.empty() && std::ranges::find(names, lowered(name)) != names.end();
}

std::string gnomeRemedy(const std::vector<std::string>& distributions) {
  for (const std::string& name : distributions)
    for (const Packages& each : kPackages)
      if (contains(each.distributions, name))
        return "GNOME shows tray items with an extension only: " + std::string(each.install) +
               " gnome-shell-extension-appindicator, log in again, then gnome-extensions enable " +
               std::string(each.extension);
  return "GNOME shows tray items with an extension only: install “AppIndicator and "
         "KStatusNotifierItem Support” (package gnome-shell-extension-appindicator, or from "
         "extensions.gnome.org) and enable it.";
}

}  // namespace

std::vector<std::string> distributionNames(std::string_view osRelease) {
  std::vector<std::string> names;
  for (const char* key : {"ID", "ID_LIKE"}) {
    std::string list = osReleaseValue(osRelease, key).value_or("");
    std::ranges::replace(list, ' ', ':');
    for (std::string& name : desktopNames(list)) names.push_back(std::move(name));
  }
  return names;
}

std::vector<std::string> currentDistributionNames() {
  for (const char* path : {"/etc/os-release", "/usr/lib/os-release"}) {
    std::error_code error;
    if (const auto text = readFile(path, kMostBytes, error)) return distributionNames(*text);
  }
  return {};
}

std::string trayRemedy(const std::vector<std::string>& desktops,
                       const std::vector<std::string>& distributions) {
  for (const std::string& desktop : desktops) {
    const std::string name = lowered(desktop);
    if (name == "gnome" || name.starts_with("gnome-")) return gnomeRemedy(distributions);
    for (const Desktops& each : kDesktops)
      if (contains(each.names, name)) return std::string(each.remedy);
  }
  return std::string(kAnywhere);
}

std::string trayRemedyHere() {
  return trayRemedy(currentDesktopSession().desktops, currentDistributionNames());
}

}  // namespace kelvane
