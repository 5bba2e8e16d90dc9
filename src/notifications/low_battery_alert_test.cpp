#include "notifications/low_battery_alert.h"

#include <optional>

#include <gtest/gtest.h>

#include "battery/battery.h"
#include "platform/memory/memory_computer.h"

namespace kelvane {
namespace {

class LowBatteryAlertTest : public ::testing::Test {
 protected:
  LowBatteryAlertTest() { computer.set({.percent = 50}); }

  // The battery reaches a state and is checked; how many alerts were shown until then.
  std::size_t shownAfter(const MemoryBattery& state) {
    computer.set(state);
    alert.check(lastTimeShown);
    computer.runLoop.run();
    return computer.windows.alerts.size();
  }
  void dismiss() {
    computer.windows.pressButton(0);
    computer.runLoop.run();
  }

  static MemoryBattery critical(int percent) {
    return {.percent = percent, .warning = BatteryWarningLevel::final};
  }

  MemoryComputer computer;
  Battery battery{computer.registry, computer.powerSources, computer.runLoop};
  std::optional<Date> lastTimeShown;
  LowBatteryAlert alert{battery, computer.windows, computer.runLoop,
                        [] { return Picture{.name = "LowBatteryIcon"}; }};
};

TEST_F(LowBatteryAlertTest, ShowsOnceInADischarge) {
  EXPECT_EQ(shownAfter({.percent = 8, .warning = BatteryWarningLevel::early}), 0U);
  EXPECT_EQ(shownAfter(critical(4)), 1U);
  EXPECT_EQ(lastTimeShown, computer.runLoop.now());
  EXPECT_EQ(computer.windows.activations, 1);
  const Alert& shown = computer.windows.alerts[0];
  EXPECT_EQ(shown.title,
            "Your Mac is running out of battery and will soon sleep unless plugged into a power "
            "outlet.");
  EXPECT_EQ(shown.message, "");
  EXPECT_EQ(shown.style, AlertStyle::warning);
  EXPECT_TRUE(shown.buttons.empty());
  EXPECT_EQ(shown.icon->name, "LowBatteryIcon");
  dismiss();
  EXPECT_EQ(computer.runLoop.nextDeadline(), std::nullopt);

  EXPECT_EQ(shownAfter(critical(3)), 1U);
  computer.runLoop.advance(601);
  EXPECT_EQ(shownAfter(critical(2)), 1U);
  // Not above 20 %: not yet.
  EXPECT_EQ(shownAfter({.percent = 20, .isOnPower = true}), 1U);
  EXPECT_EQ(shownAfter(critical(4)), 1U);
  EXPECT_EQ(shownAfter({.percent = 21, .isOnPower = true}), 1U);
  EXPECT_EQ(shownAfter(critical(4)), 2U);
}

TEST_F(LowBatteryAlertTest, PowerClosesItWithinAFifthOfASecond) {
  shownAfter(critical(4));
  computer.runLoop.advance(3);
  EXPECT_TRUE(computer.windows.isAlertOpen());
  computer.set({.percent = 4, .isOnPower = true});
  computer.runLoop.advance(0.2);
  EXPECT_FALSE(computer.windows.isAlertOpen());
  EXPECT_TRUE(lastTimeShown.has_value());
  // Nothing ticks on.
  EXPECT_EQ(computer.runLoop.nextDeadline(), std::nullopt);
}

TEST_F(LowBatteryAlertTest, AnAdapterThatVanishesCountsAsPower) {
  computer.set(critical(4));
  computer.registry.properties.erase("ExternalConnected");
  alert.check(lastTimeShown);
  EXPECT_TRUE(computer.windows.alerts.empty());

  shownAfter(critical(4));
  computer.registry.properties.erase("ExternalConnected");
  computer.runLoop.advance(0.2);
  EXPECT_FALSE(computer.windows.isAlertOpen());
}

TEST_F(LowBatteryAlertTest, ForgetsOnlyWhenTheAlertHasEnded) {
  // A warning far above empty: the charge says "again", the open alert says "not now".
  EXPECT_EQ(shownAfter(critical(30)), 1U);
  EXPECT_TRUE(lastTimeShown.has_value());
  dismiss();
  EXPECT_FALSE(lastTimeShown.has_value());
  EXPECT_EQ(shownAfter(critical(30)), 2U);
  // Where alerts hold nothing up, more checks come while it is open.
  EXPECT_EQ(shownAfter(critical(29)), 2U);
  EXPECT_EQ(shownAfter(critical(28)), 2U);
}

TEST_F(LowBatteryAlertTest, MayEndBeforeItsAlert) {
  {
    LowBatteryAlert other(battery, computer.windows, computer.runLoop, [] { return Picture{}; });
    computer.set(critical(4));
    other.check(lastTimeShown);
  }
  dismiss();
  computer.runLoop.advance(1);
  EXPECT_FALSE(computer.windows.isAlertOpen());
}

}  // namespace
}  // namespace kelvane
