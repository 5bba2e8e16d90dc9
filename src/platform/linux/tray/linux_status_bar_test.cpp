#include "platform/linux/tray/linux_status_bar.h"

#include "platform/linux/tray/tray_item_test.h"

namespace kelvane {
namespace {

using testing::ElementsAre;

using LinuxStatusBarTest = TrayItemTest;

TEST_F(LinuxStatusBarTest, RegistersWithEverythingInPlace) {
  const auto host1 = watcher();
  start();
  ASSERT_TRUE(isRegistered(1));
  EXPECT_EQ(property("Id"), "'org.kelvane.Kelvane'");
  EXPECT_EQ(property("Category"), "'Hardware'");
  EXPECT_EQ(property("Status"), "'Active'");
  EXPECT_EQ(property("Menu"), "'/MenuBar'");
  for (const char* name : {"ToolTip", "XAyatanaLabel", "IconName", "OverlayIconPixmap"})
    EXPECT_EQ(property(name), "absent") << name;
  EXPECT_THAT(pictures(), ElementsAre("44x44:FF808080"));
  EXPECT_EQ(drawings, 1);
  EXPECT_EQ(bar->hostName(), "linux_tray_test");
  EXPECT_EQ(menuLabel(), "(<'Fully Charged'>,)");
}

TEST_F(LinuxStatusBarTest, RegistersWithEveryNewWatcherForEver) {
  start();
  runUntilIdle();
  EXPECT_EQ(drawings, 0);  // nobody to show it to
  EXPECT_EQ(bar->hostName(), "");

  auto first = watcher();
  ASSERT_TRUE(isRegistered(1));
  const auto second = watcher();  // takes the name over directly
  ASSERT_TRUE(isRegistered(2));
  EXPECT_EQ(second->calls.size(), 1U);
  first.reset();
  runUntilIdle();
  EXPECT_EQ(registered.size(), 2U);
  second->connection->close();
  ASSERT_TRUE(runUntil([&] { return bar->hostName().empty(); }));
  const auto third = watcher();
  ASSERT_TRUE(isRegistered(3));
  EXPECT_EQ(registered[0], registered[2]);
  // One that owns its name before it is ready is asked again.
  const auto fourth = watcher(2);
  ASSERT_TRUE(isRegistered(4));
  EXPECT_EQ(fourth->calls.size(), 3U);
}

TEST_F(LinuxStatusBarTest, GnomeGetsALabelAndAllOthersALeftClick) {
  std::vector<std::string> clicks;
  bool hasMenu = true;
  options.activationToken = [&](const std::string& token) { clicks.push_back("token " + token); };
  options.activated = [&](Menu* shown, std::optional<Point> where) {
    EXPECT_EQ(shown, hasMenu ? &menu : nullptr);
    clicks.push_back(where ? "at " + std::to_string(static_cast<int>(where->x)) : "somewhere");
  };
  options.menuRemoved = [&] { clicks.push_back("no menu"); };
  const ProcessName gnome("gnome-shell");
  std::vector<Slot> slots;
  auto host1 = watcher();
  start();
  const auto observation = item->observeSlot([&] { slots.push_back(item->slot()); });
  item->setTitle("57﹪");
  ASSERT_TRUE(isRegistered(1));
  ASSERT_EQ(slots.size(), 1U);
  EXPECT_EQ(slots[0], (Slot{Slot::Shape::square, 16, 2, true}));
  EXPECT_EQ(property("XAyatanaLabel"), "'57%'");
  EXPECT_THAT(pictures(), ElementsAre("16x16:FF808080", "32x32:FF808080"));
  item->setTitle("");
  ASSERT_TRUE(runUntil([&] { return !heard.empty(); }));
  EXPECT_THAT(heard, ElementsAre("XAyatanaNewLabel"));
  EXPECT_EQ(property("XAyatanaLabel"), "''");
  item->setImage(std::nullopt);
  ASSERT_TRUE(runUntil([&] { return heard.size() > 1; }));
  EXPECT_THAT(heard, ElementsAre("XAyatanaNewLabel", "NewIcon"));
  EXPECT_FALSE(call(host.get(), {registered.back(), "/StatusNotifierItem", kItem}, "Activate",
                    g_variant_new("(ii)", 3, 4)));

  const ProcessName lxqt("lxqt-panel");
  const auto host2 = watcher();
  ASSERT_TRUE(isRegistered(2));
  EXPECT_EQ(property("XAyatanaLabel"), "absent");
  callItem("ProvideXdgActivationToken", g_variant_new("(s)", "t0k"));
  callItem("Activate", g_variant_new("(ii)", 1190, 16));
  ASSERT_TRUE(runUntil([&] { return clicks.size() == 2; }));
  EXPECT_THAT(clicks, ElementsAre("token t0k", "at 1190"));
  callItem("Scroll", g_variant_new("(is)", 1, "sideways"));
  callItem("SecondaryActivate", g_variant_new("(ii)", 1, 1));

  const ProcessName mate("mate-panel");
  const auto host3 = watcher();
  ASSERT_TRUE(isRegistered(3));
  callItem("ContextMenu", g_variant_new("(ii)", 0, 25));
  ASSERT_TRUE(runUntil([&] { return clicks.size() == 3; }));
  EXPECT_EQ(clicks.back(), "somewhere");
  item->setMenu(&menu);
  EXPECT_EQ(clicks.size(), 3U);
  hasMenu = false;
  item->setMenu(nullptr);
  callItem("Activate", g_variant_new("(ii)", 0, 25));
  ASSERT_TRUE(runUntil([&] { return clicks.size() == 5; }));
  EXPECT_EQ(clicks[3], "no menu");
  item->setMenu(&menu);
  item.reset();
  EXPECT_EQ(clicks.size(), 6U) << "the menu may go before the item is gone";
}

TEST_F(LinuxStatusBarTest, TellsAppearanceOnceAtRegistrationAndWhenItChanges) {
  const ProcessName mate("mate-panel");
  guint32 scheme = 2;
  const auto portal =
      serve("org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
            R"xml(<interface name="org.freedesktop.portal.Settings">
        <method name="ReadAll"><arg type="as" direction="in"/>
          <arg type="a{sa{sv}}" direction="out"/></method>
        <signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
      </interface>)xml",
            [&](const ExportedObject::Call&) {
              return g_variant_new_parsed(
                  "({'org.freedesktop.appearance': {'color-scheme': <%u>},"
                  " 'org.gnome.desktop.interface': {'font-name': <'No Such Font 10'>}},)",
                  scheme);
            });
  start();
  std::vector<Slot::Shape> slots;
  const auto slotObservation = item->observeSlot([&] { slots.push_back(item->slot().shape); });
  std::vector<Appearance> seen;
  const auto observation =
      item->observeEffectiveAppearance([&] { seen.push_back(item->effectiveAppearance()); });
  EXPECT_THAT(seen, ElementsAre(Appearance::dark));
  const auto host1 = watcher();
  ASSERT_TRUE(isRegistered(1));
  EXPECT_THAT(seen, ElementsAre(Appearance::dark, Appearance::light));
  // First for the new font, then for the slot.
  EXPECT_THAT(slots, ElementsAre(Slot::Shape::square, Slot::Shape::wide));
  portal->object->emit("SettingChanged", g_variant_new("(ssv)", "org.freedesktop.appearance",
                                                       "color-scheme", g_variant_new_uint32(1)));
  ASSERT_TRUE(runUntil([&] { return seen.size() == 3; }));
  EXPECT_EQ(seen.back(), Appearance::dark);
}

TEST_F(LinuxStatusBarTest, TheUsersShapeAndColourGoFromHostToHost) {
  const ProcessName lxqt("lxqt-panel");
  const auto host1 = watcher();
  start();
  std::vector<Slot::Shape> shapes;
  std::vector<Appearance> appearances;
  const auto slotObservation = item->observeSlot([&] { shapes.push_back(item->slot().shape); });
  const auto observation =
      item->observeEffectiveAppearance([&] { appearances.push_back(item->effectiveAppearance()); });
  item->setLength(36);
  ASSERT_TRUE(isRegistered(1));
  shapes.clear();
  EXPECT_EQ(item->slot().height, 20);  // within the edge of a backing
  item->setShape(Slot::Shape::wide);
  EXPECT_EQ(item->slot().height, 22);
  item->setAppearance(Appearance::light);
  EXPECT_THAT(shapes, ElementsAre(Slot::Shape::wide));
  EXPECT_THAT(appearances, ElementsAre(Appearance::dark, Appearance::light));
  // No backing any more: the first pixel of a wide picture is empty.
  ASSERT_TRUE(runUntil([&] { return !heard.empty(); }));
  EXPECT_THAT(pictures(), ElementsAre("36x22:00000000", "72x44:00000000"));

  const ProcessName gnome("gnome-shell");
  const auto host2 = watcher();
  ASSERT_TRUE(isRegistered(2));
  EXPECT_EQ(item->slot(), (Slot{Slot::Shape::wide, 16, 2, true}));
  EXPECT_EQ(item->effectiveAppearance(), Appearance::light);
  item->setShape(std::nullopt);
  item->setAppearance(std::nullopt);
  EXPECT_EQ(item->slot().shape, Slot::Shape::square);
  EXPECT_EQ(item->effectiveAppearance(), Appearance::dark);
}

TEST_F(LinuxStatusBarTest, WithoutABusNothingIsShownAndNothingFails) {
  options = {};
  start();
  item->setVisible(false);
  item->setVisible(true);
  runUntilIdle();
  EXPECT_EQ(drawings, 0);
  EXPECT_FALSE(bar->isRegistered());
  EXPECT_TRUE(bar->isItemWanted());
  item.reset();
  EXPECT_FALSE(bar->isItemWanted());
}

}  // namespace
}  // namespace kelvane
