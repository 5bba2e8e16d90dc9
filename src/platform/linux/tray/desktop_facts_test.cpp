#include "platform/linux/tray/desktop_facts.h"

#include <cstring>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/linux/glib/glib_ptr.h"

namespace kelvane {
namespace {

GVariantPtr parse(const std::string& text) {
  GError* rawError = nullptr;
  GVariantPtr value(g_variant_parse(nullptr, text.c_str(), nullptr, nullptr, &rawError));
  const GErrorPtr error(rawError);
  if (!value) ADD_FAILURE() << text << ": " << error->message;
  return value;
}

SettingsTable table(const std::string& text) {
  return settingsTableOf(parse("@a{sv} {" + text + "}").get());
}

std::string nameOf(const std::optional<Appearance>& appearance) {
  if (!appearance) return "unknown";
  return *appearance == Appearance::dark ? "dark" : "light";
}

TEST(DesktopFacts, AppearanceOfAColorScheme) {
  const std::pair<const char*, const char*> cases[] = {
      {"uint32 0", "light"},   {"uint32 1", "dark"},  {"uint32 2", "light"},
      {"uint32 7", "unknown"}, {"'dark'", "unknown"}, {"int32 1", "unknown"}};
  for (const auto& [value, expected] : cases)
    EXPECT_EQ(nameOf(appearanceOfColorScheme(parse(value).get())), expected) << value;
  EXPECT_EQ(nameOf(appearanceOfColorScheme(nullptr)), "unknown");
}

TEST(DesktopFacts, WishesForWindows) {
  for (const auto& [value, isDark] : std::vector<std::pair<std::string, std::optional<bool>>>{
           {"uint32 0", {}}, {"uint32 1", true}, {"uint32 2", false}, {"'dark'", {}}})
    EXPECT_EQ(darkWindowsOfColorScheme(parse(value).get()), isDark) << value;

  const struct {
    std::string appearance, interface, xfce;
    bool isReduced;
  } cases[] = {
      {"", "", "", false},
      {"'reduced-motion': <uint32 1>", "", "", true},
      {"'reduced-motion': <uint32 0>", "'enable-animations': <true>", "", false},
      {"'reduced-motion': <true>", "'enable-animations': <'no'>", "", false},
      {"", "'enable-animations': <false>", "", true},
      {"", "", "'/Gtk/EnableAnimations': <false>", true},
  };
  for (const auto& row : cases)
    EXPECT_EQ(wantsReducedMotion(table(row.appearance), table(row.interface), table(row.xfce)),
              row.isReduced)
        << row.appearance << row.interface << row.xfce;
}

TEST(DesktopFacts, AppearanceOfAnXfcePanel) {
  constexpr const char* kSolid =
      "'/panels/panel-1/background-style': <uint32 1>, "
      "'/panels/panel-1/background-rgba': ";
  const std::string solid = kSolid;
  const struct {
    std::string panel, settings, expected;
  } cases[] = {
      {"", "", "light"},
      {"'/panels/dark-mode': <true>", "'/Net/ThemeName': <'Adwaita'>", "dark"},
      {"'/panels/dark-mode': <false>", "'/Net/ThemeName': <'Adwaita'>", "light"},
      {"'/panels/dark-mode': <'yes'>", "'/Net/ThemeName': <'Adwaita-dark'>", "dark"},
      {"", "'/Net/ThemeName': <'Arc-Darker'>", "dark"},
      {"", "'/Net/ThemeName': <'Greybird'>", "unknown"},
      {solid + "<[<0.1>, <0.1>, <0.2>, <1.0>]>", "", "dark"},
      {"'/panels/dark-mode': <true>, " + solid + "<[<0.9>, <0.9>, <0.9>, <1.0>]>", "", "light"},
      {solid + "<[<0.1>, <0.1>, <0.2>, <0.3>]>", "", "light"},  // the wallpaper shows through
      {solid + "<[<0.1>, <'x'>, <0.2>, <1.0>]>", "", "light"},
      {"'/panels/panel-1/background-style': <uint32 0>, "
       "'/panels/panel-1/background-rgba': <[<0.1>, <0.1>, <0.1>, <1.0>]>",
       "", "light"},
  };
  for (const auto& each : cases)
    EXPECT_EQ(nameOf(appearanceOfXfcePanel(table(each.panel), table(each.settings))), each.expected)
        << each.panel << " | " << each.settings;
}

TEST(DesktopFacts, ScalesOfDesktops) {
  EXPECT_EQ(scaleOfXfce(table("")), 1);
  EXPECT_EQ(scaleOfXfce(table("'/Gdk/WindowScalingFactor': <2>")), 2);
  EXPECT_EQ(scaleOfXfce(table("'/Gdk/WindowScalingFactor': <-3>")), 1);
  EXPECT_EQ(scaleOfXfce(table("'/Gdk/WindowScalingFactor': <'2'>")), 1);

  const auto mutter = [](const std::string& monitors) {
    return scaleOfMutter(parse("(uint32 1, @a((ssss)a(siiddada{sv})a{sv}) [], "
                               "@a(iiduba(ssss)a{sv}) [" +
                               monitors + "], @a{sv} {})")
                             .get());
  };
  EXPECT_EQ(mutter(""), std::nullopt);
  EXPECT_EQ(mutter("(0, 0, 1.0, 0, true, [], {}), (1, 0, 1.5, 0, false, [], {})"), 1.5);
  EXPECT_EQ(mutter("(0, 0, 900.0, 0, true, [], {})"), std::nullopt);
  EXPECT_EQ(scaleOfMutter(parse("('x',)").get()), std::nullopt);

  const auto screens = [](const std::string& outputs) {
    return scaleOfKScreen(parse("({'outputs': <@av [" + outputs + "]>},)").get());
  };
  EXPECT_EQ(
      screens("<{'enabled': <true>, 'scale': <1.25>}>, <{'enabled': <false>, 'scale': <2.0>}>"),
      1.25);
  EXPECT_EQ(screens("<{'scale': <'big'>}>, <5>"), std::nullopt);
  EXPECT_EQ(scaleOfKScreen(parse("(@a{sv} {'outputs': <1>},)").get()), std::nullopt);
}

TEST(DesktopFacts, ScaleOfTheEnvironment) {
  const struct {
    TrayHost host;
    const char* variable;
    const char* value;
    std::optional<double> expected;
  } cases[] = {
      {TrayHost::xfce, "GDK_SCALE", "2", 2},
      {TrayHost::xfce, "QT_SCALE_FACTOR", "2", std::nullopt},
      {TrayHost::lxqt, "QT_SCALE_FACTOR", "1.5", 1.5},
      {TrayHost::lxqt, "GDK_SCALE", "2", std::nullopt},
      {TrayHost::plasma, "QT_SCREEN_SCALE_FACTORS", "eDP-1=1.25;HDMI-1=2;", 2},
      {TrayHost::plasma, "QT_SCREEN_SCALE_FACTORS", ";;=;x=y", std::nullopt},
      {TrayHost::xfce, "GDK_SCALE", "", std::nullopt},
      {TrayHost::xfce, "GDK_SCALE", "0", std::nullopt},
      {TrayHost::xfce, "GDK_SCALE", "nan", std::nullopt},
      {TrayHost::xfce, "GDK_SCALE", "2 monitors", std::nullopt},
  };
  for (const auto& each : cases)
    EXPECT_EQ(scaleOfEnvironment(each.host,
                                 [&](const char* name) {
                                   return std::strcmp(name, each.variable) == 0 ? each.value
                                                                                : nullptr;
                                 }),
              each.expected)
        << each.variable << "=" << each.value;
}

TEST(DesktopFacts, FamilyOfAFontDescription) {
  const std::pair<const char*, const char*> cases[] = {
      {"Sans 10", "Sans"},
      {"Noto Sans Semi-Bold Italic 10.5", "Noto Sans"},
      {"DejaVu Sans Condensed 9", "DejaVu Sans"},
      {"Cantarell", "Cantarell"},
      {"Source Code Pro 12px", "Source Code Pro"},
      {"Ubuntu, 11", "Ubuntu"},
      {"Noto Sans,Sans 10", "Noto Sans"},
      {"Black 12", "Black"},
      {"  ", ""},
      {"10", ""},
      {"", ""},
  };
  for (const auto& [description, family] : cases)
    EXPECT_EQ(fontFamilyOf(description), family) << description;
}

}  // namespace
}  // namespace kelvane
