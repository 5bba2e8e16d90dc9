#include "platform/linux/tray/desktop_settings.h"

#include <cstdlib>

#include "platform/linux/tray/tray_bus_test.h"

namespace kelvane {
namespace {

constexpr const char* kPortalXml = R"xml(<interface name="org.freedesktop.portal.Settings">
  <method name="ReadAll">
    <arg type="as" direction="in"/><arg type="a{sa{sv}}" direction="out"/>
  </method>
  <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
</interface>)xml";
constexpr const char* kXfconfXml = R"xml(<interface name="org.xfce.Xfconf">
  <method name="GetAllProperties">
    <arg type="s" direction="in"/><arg type="s" direction="in"/>
    <arg type="a{sv}" direction="out"/>
  </method>
  <signal name="PropertyChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
  <signal name="PropertyRemoved"><arg type="s"/><arg type="s"/></signal>
</interface>)xml";

class DesktopSettingsTest : public PrivateBusTest {
 protected:
  DesktopSettingsTest() : ours(connect()), settings(ours.get(), [this] { ++changes; }) {
    for (const char* variable : {"GDK_SCALE", "QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS"})
      unsetenv(variable);
  }
  std::unique_ptr<Service> portal(const char* answer, const char* xml = kPortalXml) {
    return serve("org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop", xml,
                 [answer](const ExportedObject::Call&) {
                   return g_variant_parse(nullptr, answer, nullptr, nullptr, nullptr);
                 });
  }

  BusPtr ours;
  int changes = 0;
  DesktopSettings settings;
};

TEST_F(DesktopSettingsTest, HearsAPortalThatComesLateAndWhatItTells) {
  settings.follow(TrayHost::mate);
  ASSERT_TRUE(runUntil([&] { return settings.isComplete(); }));
  EXPECT_EQ(settings.barAppearance(), std::nullopt);
  EXPECT_EQ(settings.fontFamily(), "");
  EXPECT_EQ(settings.scale(), std::nullopt);

  const auto late = portal(
      "({'org.freedesktop.appearance': {'color-scheme': <uint32 1>},"
      " 'org.gnome.desktop.interface': {'font-name': <'Noto Sans 10'>}},)");
  ASSERT_TRUE(runUntil([&] { return settings.barAppearance().has_value(); }));
  EXPECT_EQ(settings.barAppearance(), Appearance::dark);
  EXPECT_EQ(settings.fontFamily(), "Noto Sans");

  const int before = changes;
  late->object->emit("SettingChanged", g_variant_new("(ssv)", "org.freedesktop.appearance",
                                                     "color-scheme", g_variant_new_uint32(2)));
  ASSERT_TRUE(runUntil([&] { return changes > before; }));
  EXPECT_EQ(settings.barAppearance(), Appearance::light);
}

TEST_F(DesktopSettingsTest, ABrokenPortalIsAsGoodAsNone) {
  const auto broken = portal("('nonsense',)",
                             R"xml(<interface name="org.freedesktop.portal.Settings">
    <method name="ReadAll"><arg type="as" direction="in"/><arg type="s" direction="out"/></method>
    <signal name="SettingChanged"/></interface>)xml");
  settings.follow(TrayHost::mate);
  ASSERT_TRUE(runUntil([&] { return settings.isComplete(); }));
  EXPECT_EQ(settings.barAppearance(), std::nullopt);
  // Another program's word does not count.
  const auto other = connect();
  other->emit("/org/freedesktop/portal/desktop", "org.freedesktop.portal.Settings",
              "SettingChanged",
              g_variant_new("(ssv)", "org.freedesktop.appearance", "color-scheme",
                            g_variant_new_uint32(1)));
  const int before = changes;
  broken->object->emit("SettingChanged", g_variant_new("(s)", "short"));
  broken->object->emit("SettingChanged", g_variant_new("(ssv)", "org.freedesktop.appearance",
                                                       "contrast", g_variant_new_uint32(1)));
  ASSERT_TRUE(runUntil([&] { return changes > before; }));
  EXPECT_EQ(settings.barAppearance(), std::nullopt);
}

TEST_F(DesktopSettingsTest, ReadsXfconfForXfceOnly) {
  const auto xfconf = serve("org.xfce.Xfconf", "/org/xfce/Xfconf", kXfconfXml,
                            [](const ExportedObject::Call& call) -> GVariant* {
                              const char* channel = nullptr;
                              g_variant_get(call.arguments, "(&s&s)", &channel, nullptr);
                              if (std::string_view(channel) == "xsettings")
                                return nullptr;  // nothing was ever set
                              return g_variant_parse(nullptr, "({'/panels/dark-mode': <true>},)",
                                                     nullptr, nullptr, nullptr);
                            });
  settings.follow(TrayHost::waybar);
  ASSERT_TRUE(runUntil([&] { return settings.isComplete(); }));
  EXPECT_TRUE(xfconf->calls.empty());
  EXPECT_EQ(settings.scale(), std::nullopt);

  settings.follow(TrayHost::xfce);
  ASSERT_TRUE(runUntil([&] { return settings.isComplete(); }));
  EXPECT_EQ(settings.barAppearance(), Appearance::dark);
  EXPECT_EQ(settings.scale(), 1);

  const auto change = [&](const char* signal, GVariant* parameters) {
    const int before = changes;
    xfconf->object->emit(signal, parameters);
    ASSERT_TRUE(runUntil([&] { return changes > before; }));
  };
  change("PropertyRemoved", g_variant_new("(ss)", "xfce4-panel", "/panels/dark-mode"));
  EXPECT_EQ(settings.barAppearance(), Appearance::light);
  change("PropertyChanged",
         g_variant_new("(ssv)", "xsettings", "/Gdk/WindowScalingFactor", g_variant_new_int32(2)));
  EXPECT_EQ(settings.scale(), 2);
  setenv("GDK_SCALE", "3", 1);
  EXPECT_EQ(settings.scale(), 3);
  unsetenv("GDK_SCALE");
}

}  // namespace
}  // namespace kelvane
