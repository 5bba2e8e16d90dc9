#include "platform/linux/tray/linux_status_item.h"

#include "platform/linux/tray/tray_item_test.h"

namespace kelvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using LinuxStatusItemTest = TrayItemTest;

TEST_F(LinuxStatusItemTest, HidingIsLeavingTheBus) {
  const auto host1 = watcher();
  start();
  ASSERT_TRUE(isRegistered(1));
  bool hasLeft = false;
  const NameWatch watch(host.get(), registered[0],
                        [&](const std::string& owner) { hasLeft = owner.empty(); });
  item->setVisible(false);
  EXPECT_FALSE(item->isVisible());
  ASSERT_TRUE(runUntil([&] { return hasLeft; }));
  item->setImage(picture(0.2));
  runUntilIdle();
  EXPECT_EQ(drawings, 1);

  item->setVisible(true);
  EXPECT_TRUE(item->isVisible());
  ASSERT_TRUE(isRegistered(2));
  EXPECT_NE(registered[0], registered[1]);
  EXPECT_THAT(pictures(), ElementsAre("44x44:FF333333"));
  EXPECT_EQ(drawings, 2);
  // Hidden and shown within one turn is nothing, and hidden before the connection stands is hidden.
  item->setVisible(false);
  item->setVisible(true);
  runUntilIdle();
  EXPECT_EQ(properties() != nullptr, true);
  item->setVisible(false);
  runUntilIdle();
  item->setVisible(true);
  g_main_context_iteration(nullptr, FALSE);
  item->setVisible(false);
  runUntilIdle();
  EXPECT_EQ(registered.size(), 2U);
  EXPECT_FALSE(bar->isRegistered());
  EXPECT_FALSE(bar->isItemWanted());
}

TEST_F(LinuxStatusItemTest, RendersOnceInATurnAndTellsOnlyWhatDiffers) {
  const auto host1 = watcher();
  start();
  ASSERT_TRUE(isRegistered(1));
  const int before = drawings;
  const int updates = menu.updates;
  for (int i = 0; i < 100; ++i) {
    item->setTitle("");
    item->setLength(22);
    item->setImage(picture(0.25));
  }
  ASSERT_TRUE(runUntil([&] { return !heard.empty(); }));
  EXPECT_EQ(drawings, before + 1);
  EXPECT_EQ(menu.updates, updates + 1);
  EXPECT_THAT(heard, ElementsAre("NewIcon"));

  item->setImage(picture(0.25));
  ASSERT_TRUE(runUntil([&] { return drawings == before + 2; }));
  EXPECT_THAT(pictures(), ElementsAre("44x44:FF404040"));
  EXPECT_THAT(heard, ElementsAre("NewIcon"));
}

TEST_F(LinuxStatusItemTest, MenuChangesWhileTheItemStays) {
  const auto host1 = watcher();
  bar = std::make_unique<LinuxStatusBar>(loop, fonts, options);
  bar->menuChanged();  // before there is an item
  bar.reset();
  start();
  ASSERT_TRUE(isRegistered(1));
  const int before = drawings;
  const int updates = menu.updates;
  for (const char* text : {"a", "b", "Low Power Mode Enabled"}) {
    menuText = text;
    bar->menuChanged();
  }
  ASSERT_TRUE(runUntil([&] { return menu.updates > updates; }));
  EXPECT_EQ(menuLabel(), "(<'Low Power Mode Enabled'>,)");
  EXPECT_EQ(menu.updates, updates + 1);
  EXPECT_EQ(drawings, before);
  EXPECT_THAT(heard, IsEmpty());
}

TEST_F(LinuxStatusItemTest, TheToolTipIsTheLatestHoverView) {
  const ProcessName mate("mate-panel");
  const auto host1 = watcher();
  start();
  ASSERT_TRUE(isRegistered(1));
  EXPECT_EQ(property("ToolTip"), "absent");
  std::string text = "57﹪";
  item->addHoverView({[](bool) {}, [] { return "below"; }});
  item->addHoverView({[](bool) {}, [&] { return text; }});
  ASSERT_TRUE(runUntil([&] { return heard.size() == 1; }));
  EXPECT_EQ(property("ToolTip"), "('', [], '57%', '')");
  text = "<2:05 & more";
  item->setImage(picture(0.5));
  ASSERT_TRUE(runUntil([&] { return heard.size() == 2; }));
  EXPECT_EQ(property("ToolTip"), "('', [], '&lt;2:05 &amp; more', '')");
  EXPECT_THAT(heard, ElementsAre("NewToolTip", "NewToolTip"));
}

TEST_F(LinuxStatusItemTest, WhoReadsAllAtOnceIsToldOnce) {
  std::string text = "57%";
  const auto change = [&](double grey, const char* now) {
    heard.clear();
    text = now;
    item->setImage(picture(grey));
    EXPECT_TRUE(runUntil([&] { return !heard.empty(); }));
    item->setImage(std::nullopt);  // what comes before its signal is all that there was
    EXPECT_TRUE(runUntil([&] { return heard.size() > 1 && heard.back() == "NewIcon"; }));
    heard.pop_back();
    return heard;
  };
  start();
  item->addHoverView({[](bool) {}, [&] { return text; }});
  const ProcessName mate("mate-panel");
  const auto host1 = watcher();
  ASSERT_TRUE(isRegistered(1));
  EXPECT_THAT(change(0.6, "56%"), ElementsAre("NewIcon", "NewToolTip"));
  const ProcessName xfce("xfce4-panel");
  const auto host2 = watcher();
  ASSERT_TRUE(isRegistered(2));
  EXPECT_THAT(change(0.7, "55%"), ElementsAre("NewIcon"));
  EXPECT_EQ(property("ToolTip"), "('', [], '55%', '')");
  // Without a new picture the tool tip has its own signal.
  item->setImage(picture(0.8));
  EXPECT_TRUE(runUntil([&] { return heard.size() == 2; }));
  text = "54%";
  item->setImage(picture(0.8));
  EXPECT_TRUE(runUntil([&] { return heard.size() == 3; }));
  EXPECT_EQ(heard.back(), "NewToolTip");
}

TEST_F(LinuxStatusItemTest, ShakesAndComesToRest) {
  const auto host1 = watcher();
  start();
  ASSERT_TRUE(isRegistered(1));
  const auto atRest = pictures();
  heard.clear();
  item->shake({-2, 2, 0}, 0.1);
  ASSERT_TRUE(runUntil([&] { return heard.size() == 1; }));
  // Down, so that the first row is empty.
  EXPECT_THAT(pictures(), ElementsAre("44x44:00000000"));
  ASSERT_TRUE(runUntil([&] { return heard.size() == 3; }));
  EXPECT_THAT(heard, ElementsAre("NewIcon", "NewIcon", "NewIcon"));
  EXPECT_EQ(pictures(), atRest);
  EXPECT_EQ(loop.nextDeadline(), std::nullopt);
}

TEST_F(LinuxStatusItemTest, HearsOfClicksAndOfAMenuThatIsOpened) {
  const auto host1 = watcher();
  start();
  ASSERT_TRUE(isRegistered(1));
  int clicks = 0;
  auto observation = item->observeClicks([&] { ++clicks; });
  const BusCalls::Target menuOfItem{registered.back(), "/MenuBar", "com.canonical.dbusmenu"};
  callItem("Activate", g_variant_new("(ii)", 3, 4));
  EXPECT_TRUE(runUntil([&] { return clicks == 1; }));
  EXPECT_TRUE(call(host.get(), menuOfItem, "AboutToShow", g_variant_new("(i)", 0)));
  EXPECT_TRUE(runUntil([&] { return clicks == 2; }));
  EXPECT_TRUE(call(host.get(), menuOfItem, "AboutToShowGroup", g_variant_new_parsed("([0],)")));
  EXPECT_TRUE(runUntil([&] { return clicks == 3; }));
  EXPECT_TRUE(call(host.get(), menuOfItem, "Event",
                   g_variant_new("(isvu)", 0, "opened", g_variant_new_int32(0), 0)));
  EXPECT_TRUE(runUntil([&] { return clicks == 4; }));
  observation.reset();
  callItem("Activate", g_variant_new("(ii)", 3, 4));
  runUntilIdle();
  EXPECT_EQ(clicks, 4);
}

}  // namespace
}  // namespace kelvane
