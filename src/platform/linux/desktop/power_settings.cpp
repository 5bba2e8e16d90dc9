#include "platform/linux/desktop/power_settings.h"

#include <algorithm>
#include <array>
#include <string_view>

#include <glib.h>

namespace kelvane {
namespace {

struct Panel {
  std::array<const char*, 2> desktops;  // names in XDG_CURRENT_DESKTOP
  const char* program;
  std::array<const char*, 2> arguments = {};
};

// Those that run by themselves come first: they serve where there is no desktop. Within a desktop
// the newest version comes first.
constexpr Panel kPanels[] = {
    {{"XFCE"}, "xfce4-power-manager-settings"},
    {{"MATE"}, "mate-power-preferences"},
    {{"LXQt"}, "lxqt-config-powermanagement"},
    {{"KDE"}, "systemsettings", {"kcm_powerdevilprofilesconfig"}},
    {{"KDE"}, "systemsettings5", {"kcm_powerdevilprofilesconfig"}},
    {{"KDE"}, "kcmshell6", {"kcm_powerdevilprofilesconfig"}},
    {{"KDE"}, "kcmshell5", {"powerdevilprofilesconfig"}},
    {{"Unity"}, "unity-control-center", {"power"}},
    {{"Budgie"}, "budgie-control-center", {"power"}},
    {{"GNOME", "Unity"}, "gnome-control-center", {"power"}},
    {{"Budgie"}, "gnome-control-center", {"power"}},
    {{"X-Cinnamon", "Cinnamon"}, "cinnamon-settings", {"power"}},
    {{"Pantheon"}, "io.elementary.settings", {"settings://power"}},
    {{"Pantheon"}, "io.elementary.switchboard", {"settings://power"}},
    {{"COSMIC"}, "cosmic-settings", {"power"}},
    {{"Deepin", "DDE"}, "dde-control-center", {"-p", "power"}},
    {{"UKUI"}, "ukui-control-center", {"-m", "power"}},
};

bool isOf(const Panel& panel, const std::string& desktop) {
  return std::ranges::any_of(panel.desktops, [&](const char* name) {
    return name && g_ascii_strcasecmp(name, desktop.c_str()) == 0;
  });
}

std::vector<std::string> commandOf(const Panel& panel) {
  std::vector<std::string> command = {panel.program};
  for (const char* argument : panel.arguments)
    if (argument) command.emplace_back(argument);
  return command;
}

}  // namespace

std::vector<std::string> powerSettingsCommand(const DesktopSession& session) {
  for (const std::string& desktop : session.desktops)
    for (const Panel& panel : kPanels)
      if (isOf(panel, desktop) && session.hasProgram(panel.program)) return commandOf(panel);
  for (const Panel& panel : kPanels)
    if (session.hasProgram(panel.program)) return commandOf(panel);
  return {};
}

}  // namespace kelvane
