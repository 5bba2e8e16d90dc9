#include "menubar/status_item_controller.h"

#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "kit/kit_keys.h"
#include "menubar/colors.h"
#include "menubar/item_fixture_test.h"
#include "platform/memory/memory_menu.h"
#include "platform/memory/memory_status_bar.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;

class ControllerTest : public ItemTest {
 protected:
  MemoryStatusItemState& item() { return *statusBar.item(); }
  std::optional<PropertyValue> preferred() {
    return preferences.object("NSStatusItem Preferred Position Item-0");
  }
  std::optional<PropertyValue> previous() {
    return preferences.object("Tq_StatusItem-0_PreviousPosition");
  }
  void setPreferred(double position) {
    preferences.setObject("NSStatusItem Preferred Position Item-0", position);
  }

  MemoryStatusBar statusBar;
  MemoryMenu menu;
  KitKeys kitKeys{preferences};
  StatusItemController controller{statusBar, preferences, kitKeys, context, menu};
};

TEST_F(ControllerTest, MakesTheItemOnceAtTheFirstAccess) {
  EXPECT_EQ(statusBar.itemCount(), 0);
  controller.statusItem();
  controller.statusItem();
  EXPECT_EQ(statusBar.itemCount(), 1);
  EXPECT_THAT(item().calls, ElementsAre("visible true", "behavior 6", "menu"));
  EXPECT_EQ(item().length, kSquareStatusItemLength);
  EXPECT_EQ(item().menu, &menu);
}

TEST_F(ControllerTest, HidingKeepsThePositionAndShowingRestoresIt) {
  controller.statusItem();
  setPreferred(321);
  controller.setVisiblePreservingPosition(false);
  EXPECT_FALSE(item().isVisible);
  EXPECT_EQ(previous(), PropertyValue(321.0));

  setPreferred(1000);  // the platform forgot it meanwhile
  controller.setVisiblePreservingPosition(true);
  EXPECT_TRUE(item().isVisible);
  EXPECT_EQ(preferred(), PropertyValue(321.0));
}

TEST_F(ControllerTest, ThePlaceholderAndAMissingPositionAreNeverKept) {
  controller.statusItem();
  preferences.setObject("Tq_StatusItem-0_PreviousPosition", 77.0);
  controller.setVisiblePreservingPosition(false);
  EXPECT_EQ(previous(), PropertyValue(77.0));
  EXPECT_EQ(preferred(), std::nullopt);
  controller.setVisiblePreservingPosition(true);
  setPreferred(1000);
  controller.setVisiblePreservingPosition(false);
  EXPECT_EQ(previous(), PropertyValue(77.0));
}

TEST_F(ControllerTest, PositionIsWrittenAgainWhileThePlatformStillShowsTheItem) {
  controller.statusItem();
  preferences.setObject("Tq_StatusItem-0_PreviousPosition", 77.0);
  setPreferred(1000);
  item().hidesLate = true;
  controller.setVisiblePreservingPosition(false);
  EXPECT_EQ(preferred(), PropertyValue(77.0));
}

TEST_F(ControllerTest, VisibilityRule) {
  struct Row {
    bool hidesOnPower;
    std::optional<bool> connected;
    bool visible;
  };
  const Row rows[] = {{false, true, true},
                      {false, false, true},
                      {true, true, false},
                      {true, false, true},
                      {true, std::nullopt, false}};
  for (const Row& row : rows) {
    settings.hideIconWhenOnPower.set(row.hidesOnPower);
    registry.properties.clear();
    if (row.connected) registry.properties.emplace("ExternalConnected", *row.connected);
    controller.updateStatusItemVisibility();
    EXPECT_EQ(item().isVisible, row.visible);
  }
}

TEST_F(ControllerTest, UpdatesInTheirOrder) {
  controller.statusItem();
  item().calls.clear();
  set({.percent = 57});
  controller.updateStatusItem();
  EXPECT_THAT(item().calls, ElementsAre("length 28", "title ", "template image"));
  item().calls.clear();
  set({.percent = 57, .isOnPower = true});
  settings.textOnlyIcon.set(true);
  controller.updateStatusItem();
  // Six characters of 0.6 × 11, the variation selector counted, rounded up, and 3.
  EXPECT_THAT(item().calls, ElementsAre("attributed title ⚡︎ 57﹪", "no image", "length 43"));
}

TEST_F(ControllerTest, WarningIsTintedUnderTheAppearanceOfTheButton) {
  set({.percent = 4, .warning = BatteryWarningLevel::early});
  statusBar.appearance = Appearance::dark;
  controller.updateStatusItem();
  ASSERT_TRUE(item().image.has_value());
  EXPECT_FALSE(item().image->isTemplate);
  EXPECT_EQ(record(*item().image).back().color, namedColor("EarlyLowBattery").dark);
}

TEST_F(ControllerTest, FollowsTheShapeOfTheSlot) {
  set({.percent = 57, .isOnPower = true});
  controller.updateStatusItem();
  EXPECT_EQ(item().image->size, (Size{36, 14}));
  item().slot = {.shape = Slot::Shape::square, .height = 16, .showsTextBeside = true};
  item().slotObservers.notify();
  EXPECT_EQ(item().image->size, (Size{16, 16}));
  EXPECT_EQ(item().length, kSquareStatusItemLength);
  EXPECT_EQ(item().title.plainText(), "57﹪");  // the image has the bolt
  item().slot = {.shape = Slot::Shape::square, .height = 22};
  item().slotObservers.notify();
  EXPECT_EQ(item().title.plainText(), "");
}

TEST_F(ControllerTest, TheUsersShapeAndColourWinOverTheBars) {
  set({.percent = 4, .warning = BatteryWarningLevel::early});
  statusBar.slot = {.shape = Slot::Shape::square, .height = 24};
  settings.trayIconShape.set(TrayIconShape::wide);
  settings.trayIconColor.set(TrayIconColor::light);
  controller.updateStatusItem();
  EXPECT_EQ(item().image->size, (Size{28, 14}));
  EXPECT_EQ(record(*item().image).back().color, namedColor("EarlyLowBattery").dark);
  EXPECT_EQ(item().effectiveSlot().height, 24);
  settings.trayIconShape.set(TrayIconShape::square);
  settings.trayIconColor.set(TrayIconColor::dark);
  controller.applyTraySettings();
  EXPECT_EQ(item().image->size, (Size{24, 24}));
  EXPECT_EQ(item().wantedAppearance, Appearance::light);
  settings.trayIconShape.set(TrayIconShape::automatic);
  settings.trayIconColor.set(TrayIconColor::automatic);
  controller.applyTraySettings();
  EXPECT_EQ(item().wantedShape, std::nullopt);
  EXPECT_EQ(item().wantedAppearance, std::nullopt);
}

TEST_F(ControllerTest, HoverShowsWhatTheItemDoesNot) {
  struct Row {
    MemoryBattery battery;
    bool showsPercentage;
    std::string expected;
  };
  const Row rows[] = {{{.percent = 57, .estimate = 7500}, true, "2:05"},
                      {{.percent = 57}, true, "…"},
                      {{.percent = 100, .isOnPower = true}, true, "∞"},
                      {{.percent = 57, .estimate = 7500}, false, "57﹪"}};
  controller.installHoverView();
  controller.installHoverView();
  ASSERT_EQ(item().hoverViews.size(), 2U);
  EXPECT_EQ(item().hoverViews[0].horizontalPadding, 14);
  EXPECT_EQ(item().hoverViews[0].verticalPadding, 10);
  settings.showPercentageSignInIcon.set(false);  // the popover keeps its sign
  for (const Row& row : rows) {
    set(row.battery);
    settings.showPercentage.set(row.showsPercentage);
    EXPECT_EQ(item().hoverViews[0].text(), row.expected);
  }
}

}  // namespace
}  // namespace kelvane
