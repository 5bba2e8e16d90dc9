#include "platform/linux/desktop/tray_remedy.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;

TEST(TrayRemedy, IsThatOfTheDesktop) {
  const struct {
    std::vector<std::string> desktops, distributions;
    const char* remedy;
  } rows[] = {
      {{"XFCE"}, {"debian"}, "“Status Tray Plugin”"},
      {{"MATE"}, {}, "“Notification Area”"},
      {{"LXQt"}, {}, "“Status Notifier”"},
      {{"KDE"}, {}, "“System Tray”"},
      {{"X-Cinnamon"}, {}, "“XApp Status Applet”"},
      {{"Budgie", "GNOME"}, {"ubuntu"}, "applet “System Tray”"},
      {{"sway"}, {}, "in place of swaybar"},
      {{"Hyprland"}, {}, "waybar with its module “tray”"},
      {{"i3"}, {}, "snixembed"},
      {{"GNOME"}, {"debian"}, "apt install gnome-shell-extension-appindicator"},
      {{"ubuntu", "GNOME"}, {"ubuntu", "debian"}, "enable ubuntu-appindicators@ubuntu.com"},
      {{"GNOME-Classic", "GNOME"}, {"almalinux", "rhel", "centos", "fedora"}, "dnf install gnome-"},
      {{"GNOME"}, {"fedora"}, "enable appindicatorsupport@rgcjonas.gmail.com"},
      {{"GNOME"}, {"endeavouros", "arch"}, "pacman -S gnome-shell-extension-appindicator"},
      {{"GNOME"}, {"nixos"}, "extensions.gnome.org"},
      {{"GNOMES"}, {"debian"}, "xfce4-panel"},
      {{""}, {}, "xfce4-panel"},
      {{}, {}, "xfce4-panel"},
  };
  for (const auto& row : rows)
    EXPECT_THAT(trayRemedy(row.desktops, row.distributions), HasSubstr(row.remedy))
        << ::testing::PrintToString(row.desktops);
  EXPECT_THAT(trayRemedy({"GNOME"}, {"nixos"}), Not(HasSubstr("apt")));
}

TEST(TrayRemedy, KnowsWhatADistributionIsMadeFrom) {
  EXPECT_THAT(distributionNames("NAME=x\nID_LIKE=\"rhel centos fedora\"\nID=almalinux\n"),
              ElementsAre("almalinux", "rhel", "centos", "fedora"));
  EXPECT_THAT(distributionNames("ID=debian\n"), ElementsAre("debian"));
  EXPECT_THAT(distributionNames("\xff"), ElementsAre());
}

}  // namespace
}  // namespace kelvane
