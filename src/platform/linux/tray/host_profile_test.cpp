#include "platform/linux/tray/host_profile.h"

#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace kelvane {
namespace {

TEST(HostProfile, KnowsHostsByTheNameOfTheirProcess) {
  const std::pair<std::string, TrayHost> cases[] = {
      {"xfce4-panel", TrayHost::xfce},
      {"panel-3-systray", TrayHost::xfce},
      {"panel-12-systra", TrayHost::xfce},  // cut off after 15 bytes
      {"panel-6-statusn", TrayHost::xfce},
      {"panel-3-clock", TrayHost::unknown},
      {"panel-systray", TrayHost::unknown},
      {"panel-3-", TrayHost::unknown},
      {"panel--systray", TrayHost::unknown},
      {"lxqt-panel", TrayHost::lxqt},
      {"mate-panel", TrayHost::mate},
      {"notification-ar", TrayHost::mate},
      {"waybar", TrayHost::waybar},
      {".waybar-wrapped", TrayHost::waybar},
      {".gnome-shell-wr", TrayHost::gnome},
      {".notification-a", TrayHost::mate},
      {"kded5", TrayHost::plasma},
      {"kded6", TrayHost::plasma},
      {"gnome-shell", TrayHost::gnome},
      {"gnome-shell-cal", TrayHost::unknown},
      {"xapp-sn-watcher", TrayHost::cinnamon},
      {"swaybar", TrayHost::swaybar},
      {"", TrayHost::unknown},
      {".", TrayHost::unknown},
      {"some-panel", TrayHost::unknown},
  };
  for (const auto& [name, host] : cases)
    EXPECT_EQ(static_cast<int>(hostOfProcess(name)), static_cast<int>(host)) << name;
}

TEST(HostProfile, OnlyGnomeHasALabelAndOnlyThreeHostsKeepAWidth) {
  for (int i = 0; i <= static_cast<int>(TrayHost::swaybar); ++i) {
    const auto host = static_cast<TrayHost>(i);
    const HostProfile& profile = profileOf(host);
    EXPECT_EQ(static_cast<int>(profile.host), i);
    EXPECT_EQ(profile.slot.showsTextBeside, host == TrayHost::gnome) << i;
    EXPECT_EQ(profile.slot.shape == Slot::Shape::wide,
              host == TrayHost::mate || host == TrayHost::waybar || host == TrayHost::cinnamon)
        << i;
  }
}

}  // namespace
}  // namespace kelvane
