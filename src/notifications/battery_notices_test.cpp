#include "notifications/battery_notices.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "battery/battery.h"
#include "platform/memory/memory_computer.h"
#include "settings/settings_keys.h"

namespace kelvane {
namespace {

using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

class BatteryNoticesTest : public ::testing::Test {
 protected:
  BatteryNoticesTest() { computer.set({.percent = 50}); }

  // What is posted, as "identifier: title / body", while the battery goes through these states.
  std::vector<std::string> postedDuring(const std::vector<MemoryBattery>& states) {
    Battery battery(computer.registry, computer.powerSources, computer.runLoop);
    const auto subscription = battery.didChangePublisher().dropFirst().subscribe([&](bool) {
      const NoticeContext context{battery, settings, computer.notifications};
      checkFullyCharged(context);
      checkPercentageNotification(context);
    });
    computer.notifications.posted.clear();
    for (const MemoryBattery& state : states) computer.change(state);
    std::vector<std::string> result;
    for (const UserNotification& notice : computer.notifications.posted)
      result.push_back(notice.identifier + ": " + notice.title + " / " + notice.body);
    return result;
  }

  MemoryComputer computer;
  SettingsKeys settings{computer.preferences};
};

TEST_F(BatteryNoticesTest, TellsOfALevelWhenTheChargeArrivesAtIt) {
  settings.notifyAtPercentagesOnBattery.set({0.2, 0.07, 0.29});
  settings.notifyAtPercentagesOnPower.set({0.8, 1.0});
  const std::string twenty = "batteryPercentage: 20% / ";
  const std::string eighty = "batteryPercentage: 80% / ";
  const struct {
    const char* what;
    std::vector<MemoryBattery> states;
    std::vector<std::string> posted;
  } rows[] = {
      {"falling", {{.percent = 21}, {.percent = 20}}, {twenty}},
      {"the same level again", {{.percent = 20}, {.percent = 20}, {.percent = 20}}, {twenty}},
      {"rising on battery", {{.percent = 19}, {.percent = 20}}, {twenty}},
      {"left and back", {{.percent = 20}, {.percent = 21}, {.percent = 20}}, {twenty, twenty}},
      {"the other list's level",
       {{.percent = 80}, {.percent = 21}, {.percent = 20, .isOnPower = true}},
       {}},
      {"charging", {{.percent = 80, .isOnPower = true}}, {eighty}},
      {"plugged in at the level", {{.percent = 80}, {.percent = 80, .isOnPower = true}}, {}},
      {"jumped over", {{.percent = 21}, {.percent = 19}}, {}},
      // Fractions that are inexact in binary.
      {"7 and 29",
       {{.percent = 7}, {.percent = 29}},
       {"batteryPercentage: 7% / ", "batteryPercentage: 29% / "}},
      {"full as a level", {{.percent = 100, .isOnPower = true}}, {"batteryPercentage: 100% / "}},
  };
  for (const auto& row : rows) {
    computer.set({.percent = 50});
    EXPECT_THAT(postedDuring(row.states), ElementsAreArray(row.posted)) << row.what;
  }
}

TEST_F(BatteryNoticesTest, TellsOnceOfEachArrivalAtFullOnPower) {
  const std::string full = "batteryFullyCharged: Fully Charged / Your Mac's battery is at 100%";
  const MemoryBattery almost{.percent = 99, .isOnPower = true};
  const MemoryBattery reached{.percent = 100, .isOnPower = true};
  EXPECT_THAT(postedDuring({almost, reached}), IsEmpty());
  settings.notifyWhenFullyCharged.set(true);
  computer.set({.percent = 50});
  EXPECT_THAT(postedDuring({almost, reached, reached, almost, reached}),
              ElementsAreArray({full, full}));
  computer.set({.percent = 50});
  EXPECT_THAT(postedDuring({{.percent = 99}, {.percent = 100}, reached}), IsEmpty());
}

TEST_F(BatteryNoticesTest, AnAdapterThatCannotBeReadCountsAsConnected) {
  settings.notifyWhenFullyCharged.set(true);
  settings.notifyAtPercentagesOnPower.set({1.0});
  Battery battery(computer.registry, computer.powerSources, computer.runLoop);
  computer.set({.percent = 100});
  computer.registry.properties.erase("ExternalConnected");
  const NoticeContext context{battery, settings, computer.notifications};
  checkFullyCharged(context);
  checkPercentageNotification(context);
  EXPECT_EQ(computer.notifications.posted.size(), 2U);
}

}  // namespace
}  // namespace kelvane
