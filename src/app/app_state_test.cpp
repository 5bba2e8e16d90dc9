#include "app/app_state.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_computer.h"

namespace kelvane {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class AppStateTest : public ::testing::Test {
 protected:
  // No welcome but where a test wants one.
  AppStateTest() { computer.preferences.setObject("__hasLaunched__", true); }

  void start(const MemoryBattery& battery) {
    computer.set(battery);
    make();
    computer.runLoop.run();
    item().calls.clear();
  }
  void make() {
    app = std::make_unique<AppState>(
        computer.platform(), settings,
        ApplicationInformation{.name = "Kelvane", .identifier = "org.kelvane.Kelvane"});
  }
  MemoryStatusItemState& item() { return *computer.statusBar.item(); }
  // The calls since the last time, each redraw of the icon as one word.
  std::vector<std::string> calls() {
    std::vector<std::string> result;
    for (const std::string& call : item().calls) {
      if (call == "template image" || call == "image") result.push_back("redraw");
      if (call.starts_with("visible")) result.push_back(call);
      if (call == "hover view") result.push_back(call);
    }
    item().calls.clear();
    return result;
  }
  std::string drawnText() { return record(*item().image).back().what; }

  MemoryComputer computer;
  SettingsKeys settings{computer.preferences};
  std::unique_ptr<AppState> app;
};

TEST_F(AppStateTest, StartsOnTheNextTurnWithTheItemDrawnAndTheHoverView) {
  computer.set({.percent = 57});
  make();
  EXPECT_EQ(computer.statusBar.itemCount(), 0);
  computer.runLoop.run();
  EXPECT_EQ(computer.statusBar.itemCount(), 1);
  EXPECT_EQ(drawnText(), "57﹪");
  EXPECT_EQ(item().hoverViews.size(), 1U);
  // Drawn once, for the closed menu, and for each of the six keys; not for the battery's first
  // value.
  EXPECT_THAT(calls(), ElementsAre("visible true", "redraw", "redraw", "hover view", "redraw",
                                   "redraw", "redraw", "redraw", "redraw", "redraw"));
}

TEST_F(AppStateTest, RefusesWhatItIsNotFor) {
  const struct {
    std::optional<SystemVersion> system;
    bool hasBattery;
    std::string title;
    std::string message;
  } rows[] = {
      {SystemVersion{12, 0, 0}, false,
       "This version of Kelvane is meant for macOS 11 and older only. For macOS 12 and later, get "
       "a "
       "newer version of Kelvane on the App Store.",
       ""},
      {SystemVersion{11, 7, 10}, false, "This Mac is not supported.",
       "Kelvane is intended for Mac laptops with a battery."},
      {std::nullopt, false, "This Mac is not supported.",
       "Kelvane is intended for Mac laptops with a battery."},
      {SystemVersion{11, 7, 10}, true, "", ""},
      {std::nullopt, true, "", ""},
  };
  std::int64_t launches = 0;
  for (const auto& row : rows) {
    MemoryBattery{}.apply(computer.registry, computer.powerSources);
    if (!row.hasBattery) computer.powerSources.sources.clear();
    computer.systemInfo.version = row.system;
    computer.windows.alerts.clear();
    const int items = computer.statusBar.itemCount();
    make();
    computer.runLoop.run();
    EXPECT_EQ(settings.showPercentage.suite().object("Tq_launchCount"), PropertyValue(++launches));
    if (row.title.empty()) {
      EXPECT_TRUE(computer.windows.alerts.empty());
      EXPECT_EQ(computer.statusBar.itemCount(), items + 1);
      continue;
    }
    // Nothing else of start-up runs, whatever comes.
    EXPECT_TRUE(app->reopen());
    app->showPreferencesWindow();
    computer.runLoop.advance(10);
    EXPECT_EQ(computer.statusBar.itemCount(), items);
    EXPECT_TRUE(computer.windows.windows.empty());
    ASSERT_EQ(computer.windows.alerts.size(), 1U);
    const Alert& alert = computer.windows.alerts[0];
    EXPECT_EQ(alert.title, row.title);
    EXPECT_EQ(alert.message, row.message);
    EXPECT_THAT(alert.buttons, ElementsAre("Quit"));
    EXPECT_EQ(computer.runLoop.exitCode, std::nullopt);
    computer.windows.pressButton(0);
    computer.runLoop.run();
    EXPECT_EQ(std::exchange(computer.runLoop.exitCode, std::nullopt), 1);
  }
}

TEST_F(AppStateTest, EveryPowerEventRedrawsTheItem) {
  start({.percent = 57});
  computer.change({.percent = 56});
  EXPECT_THAT(calls(), ElementsAre("redraw"));
  EXPECT_EQ(drawnText(), "56﹪");
  computer.change({.percent = 56});
  EXPECT_THAT(calls(), ElementsAre("redraw"));
}

TEST_F(AppStateTest, PlugHidesFirstAndUnplugRedrawsFirst) {
  settings.hideIconWhenOnPower.set(true);
  start({.percent = 57});
  computer.change({.percent = 57, .isOnPower = true});
  EXPECT_THAT(calls(), ElementsAre("visible false", "redraw"));
  EXPECT_FALSE(item().isVisible);
  EXPECT_EQ(computer.notifications.removals, 1);
  computer.change({.percent = 58});
  EXPECT_THAT(calls(), ElementsAre("redraw", "visible true"));
  EXPECT_TRUE(item().isVisible);
  EXPECT_EQ(computer.notifications.removals, 2);
}

TEST_F(AppStateTest, ItemThatHidesOnPowerShowsForFiveSecondsAtStartAndAtReopen) {
  settings.hideIconWhenOnPower.set(true);
  start({.percent = 57, .isOnPower = true});
  computer.runLoop.advance(4.9);
  EXPECT_TRUE(item().isVisible);
  computer.runLoop.advance(0.2);
  EXPECT_FALSE(item().isVisible);
  EXPECT_TRUE(app->reopen());
  EXPECT_TRUE(item().isVisible);
  computer.runLoop.advance(4.9);
  EXPECT_TRUE(item().isVisible);
  computer.runLoop.advance(0.2);
  EXPECT_FALSE(item().isVisible);
}

TEST_F(AppStateTest, EachAppearanceKeyRedraws) {
  start({.percent = 57});
  computer.runLoop.advance(2);
  calls();
  for (const SettingKey<bool>* key :
       {&settings.showPercentage, &settings.largeIcon, &settings.oldIconStyle,
        &settings.showPercentageSignInIcon, &settings.smallMenuBarText}) {
    key->set(!key->get());
    EXPECT_THAT(calls(), IsEmpty());  // on the main queue, not inside the change
    computer.runLoop.run();
    EXPECT_THAT(calls(), ElementsAre("redraw")) << key->name();
  }
  settings.textOnlyIcon.set(true);
  computer.runLoop.run();
  EXPECT_THAT(item().calls, Contains("no image"));
  EXPECT_FALSE(item().image.has_value());
}

TEST_F(AppStateTest, ShapeAndColourInTheTrayTakeEffectAtOnce) {
  start({.percent = 4, .warning = BatteryWarningLevel::early});
  computer.runLoop.advance(2);
  settings.trayIconShape.set(TrayIconShape::square);
  computer.runLoop.run();
  EXPECT_EQ(item().image->size, (Size{22, 22}));
  calls();
  settings.trayIconColor.set(TrayIconColor::light);
  computer.runLoop.run();
  EXPECT_EQ(item().effectiveAppearance(), Appearance::dark);
  EXPECT_THAT(calls(), ElementsAre("redraw"));  // without the wait for a bar that fades
}

TEST_F(AppStateTest, HidingOnPowerTakesEffectWhoeverTurnsItOn) {
  start({.percent = 57, .isOnPower = true});
  settings.hideIconWhenOnPower.set(true);
  computer.runLoop.run();
  EXPECT_FALSE(item().isVisible);
  settings.hideIconWhenOnPower.set(false);
  computer.runLoop.run();
  EXPECT_TRUE(item().isVisible);
}

TEST_F(AppStateTest, AppearanceRedrawsOnceSettled) {
  start({.percent = 57});
  computer.runLoop.advance(2);
  calls();
  for (int i = 0; i < 3; ++i) {
    item().appearance = i % 2 ? Appearance::light : Appearance::dark;
    item().appearanceObservers.notify();
    computer.runLoop.advance(0.3);
  }
  EXPECT_THAT(calls(), IsEmpty());
  computer.runLoop.advance(0.7);
  EXPECT_THAT(calls(), ElementsAre("redraw"));
}

TEST_F(AppStateTest, HoverViewStaysWhenTurnedOffAndComesAgainWhenTurnedOn) {
  settings.showTimeOrPercentageOnHover.set(false);
  start({.percent = 57});
  EXPECT_EQ(item().hoverViews.size(), 0U);
  for (const bool isOn : {true, false, true}) {
    settings.showTimeOrPercentageOnHover.set(isOn);
    computer.runLoop.run();
  }
  EXPECT_EQ(item().hoverViews.size(), 2U);
}

TEST_F(AppStateTest, NoticesSeeTheChargeOfTheEventBefore) {
  settings.notifyAtPercentagesOnBattery.set({0.2});
  settings.notifyWhenFullyCharged.set(true);
  start({.percent = 21});
  computer.change({.percent = 20});
  ASSERT_EQ(computer.notifications.delivered.size(), 1U);
  EXPECT_EQ(computer.notifications.delivered["batteryPercentage"].title, "20%");
  computer.change({.percent = 20});
  EXPECT_EQ(computer.notifications.posted.size(), 1U);
  // What the flip removes is the older notice, not that of the same event.
  computer.change({.percent = 100, .isOnPower = true});
  ASSERT_EQ(computer.notifications.delivered.size(), 1U);
  EXPECT_EQ(computer.notifications.delivered.begin()->first, "batteryFullyCharged");
}

TEST_F(AppStateTest, LowBatteryIsLookedAtOnceTheChangeIsOver) {
  start({.percent = 5});
  // Subscribed last, so called last of all that run inside the change.
  std::vector<std::size_t> alertsByThen;
  const auto last = app->battery().didChangePublisher().dropFirst().subscribe(
      [&](bool) { alertsByThen.push_back(computer.windows.alerts.size()); });
  computer.change({.percent = 4, .warning = BatteryWarningLevel::final});
  EXPECT_THAT(alertsByThen, ElementsAre(0));
  EXPECT_TRUE(computer.windows.isAlertOpen());
  calls();
  // The modal alert holds the changes up, its timer looks at the adapter.
  computer.change({.percent = 4, .isOnPower = true});
  EXPECT_THAT(calls(), IsEmpty());
  computer.runLoop.advance(0.2);
  EXPECT_FALSE(computer.windows.isAlertOpen());
  EXPECT_THAT(calls(), ElementsAre("visible true", "redraw"));
}

TEST_F(AppStateTest, AsksForPermissionWhileANoticeIsWanted) {
  settings.notifyAtPercentagesOnPower.set({0.8});
  start({.percent = 57});
  EXPECT_EQ(computer.notifications.authorizationRequests, 1);
  settings.notifyWhenFullyCharged.set(true);
  settings.notifyAtPercentagesOnBattery.set({0.2});
  settings.notifyAtPercentagesOnBattery.set({0.2, 0.1});
  EXPECT_EQ(computer.notifications.authorizationRequests, 4);
  settings.notifyWhenFullyCharged.set(false);
  settings.notifyAtPercentagesOnBattery.set({});
  EXPECT_EQ(computer.notifications.authorizationRequests, 4);
}

TEST_F(AppStateTest, MenuIsRebuiltWhenAskedForAndItsOpeningRedraws) {
  start({.percent = 57});
  item().menu->needsUpdate();
  ASSERT_FALSE(item().menu->lines().empty());
  EXPECT_EQ(item().menu->lines()[0].title, "57﹪");
  EXPECT_THAT(calls(), IsEmpty());
  item().menu->willOpen();
  item().menu->didClose();
  EXPECT_THAT(calls(), ElementsAre("redraw", "redraw"));
}

TEST_F(AppStateTest, QueuedWorkDoesNotOutliveIt) {
  start({.percent = 57});
  app->reopen();
  app.reset();
  computer.change({.percent = 5});
  computer.runLoop.advance(10);
  EXPECT_FALSE(item().isVisible);
}

}  // namespace
}  // namespace kelvane
