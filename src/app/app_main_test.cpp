#include "app/app_main.h"

#include <optional>

#include <gtest/gtest.h>

#include "platform/memory/memory_computer.h"

namespace kelvane {
namespace {

TEST(AppMain, MigratesBeforeAnythingReadsASettingAndCountsWithTheState) {
  MemoryComputer computer;
  computer.set({.percent = 21});
  computer.preferences.setObject("notifyAtPercentages", "[0.2]");
  computer.preferences.setObject("__hasLaunched__", true);
  AppMain main(computer.platform(), {.name = "Kelvane", .identifier = "org.kelvane.Kelvane"});
  EXPECT_EQ(main.settings().notifyAtPercentagesOnBattery.get(), Levels{0.2});
  EXPECT_EQ(computer.preferences.object("Tq_launchCount"), std::nullopt);

  AppState& state = main.appState();
  EXPECT_EQ(&main.appState(), &state);
  EXPECT_EQ(computer.preferences.object("Tq_launchCount"), PropertyValue(1));
  computer.runLoop.run();
  EXPECT_EQ(computer.notifications.authorizationRequests, 2);

  main.settings().hideIconWhenOnPower.set(true);
  computer.change({.percent = 21, .isOnPower = true});
  EXPECT_FALSE(computer.statusBar.item()->isVisible);
  EXPECT_TRUE(main.appDelegate().applicationShouldHandleReopen(false));
  EXPECT_TRUE(computer.statusBar.item()->isVisible);
}

}  // namespace
}  // namespace kelvane
