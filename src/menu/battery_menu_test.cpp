#include "menu/battery_menu.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "battery/battery.h"
#include "menu/tq_menu.h"
#include "platform/memory/memory_computer.h"

namespace kelvane {
namespace {

using ::testing::ElementsAreArray;

class BatteryMenuTest : public ::testing::Test {
 protected:
  std::vector<std::string> titles() {
    rebuildBatteryMenu(menu,
                       {battery, computer.runLoop, computer.systemInfo, computer.textFormats});
    std::vector<std::string> result;
    for (const MenuLine& line : menu.lines())
      if (line.kind == MenuLine::Kind::item) result.push_back(line.title);
    return result;
  }
  MemoryComputer computer;  // its clock stands at 9:00
  Battery battery{computer.registry, computer.powerSources, computer.runLoop};
  TqMenu menu;
};

TEST_F(BatteryMenuTest, LinesForEachState) {
  struct Row {
    MemoryBattery battery;
    std::vector<std::string> lines;
  };
  const Row rows[] = {
      {{.percent = 57, .estimate = 7500},
       {"57﹪", "2h 5m Remaining", "Empty At 11:05", "Battery", "Condition: Good", "Health: 89%"}},
      {{.percent = 57},
       {"57﹪", "Calculating Time Remaining…", "Battery", "Condition: Good", "Health: 89%"}},
      {{.percent = 99, .estimate = 72000},
       {"99﹪", "20h+ Remaining", "Empty At 05:00", "Battery", "Condition: Good", "Health: 89%"}},
      {{.percent = 57, .isOnPower = true, .minutesUntilFull = 45},
       {"57﹪", "45m Until Full", "Full At 09:45", "Power Adapter", "Condition: Good",
        "Health: 89%"}},
      {{.percent = 80, .isOnPower = true, .isCharging = false, .health = "Fair"},
       {"80﹪", "Not Charging", "Power Adapter", "Condition: Fair", "Health: 89%"}},
      {{.percent = 100, .isOnPower = true, .designCapacity = 0},
       {"Fully Charged", "Power Adapter", "Condition: Good", "Health: "}},
  };
  for (const Row& row : rows) {
    computer.set(row.battery);
    EXPECT_THAT(titles(), ElementsAreArray(row.lines));
  }
}

TEST_F(BatteryMenuTest, UnreadableAdapterCountsAsConnected) {
  computer.set({.percent = 57, .isOnPower = true, .minutesUntilFull = 45});
  computer.registry.properties.erase("ExternalConnected");
  EXPECT_THAT(titles(), ElementsAreArray({"57﹪", "45m Until Full", "Full At 09:45",
                                          "Power Adapter", "Condition: Good", "Health: 89%"}));
}

TEST_F(BatteryMenuTest, ReadingsAreDisabledAndTheLastTwoNeedOption) {
  computer.set({.percent = 57});
  titles();
  const auto& lines = menu.lines();
  ASSERT_EQ(lines.size(), 7U);
  for (const MenuLine& line : lines) EXPECT_FALSE(line.isEnabled);
  EXPECT_EQ(lines[0].attributedTitle->runs[0].fontSize, 15.0);
  for (const std::size_t i : {4U, 6U}) {
    EXPECT_TRUE(lines[i].isAlternate);
    EXPECT_EQ(lines[i].keyEquivalent, (KeyEquivalent{.option = true}));
    EXPECT_EQ(lines[i - 1].kind, MenuLine::Kind::placeholder);
  }
}

TEST(TqMenuTest, PublishesWhatItsHostSays) {
  TqMenu menu;
  std::vector<std::string> seen;
  menu.onUpdate = [&](TqMenu&) { seen.push_back("onUpdate"); };
  const auto open = menu.isOpenPublisher().subscribe(
      [&](bool isOpen) { seen.push_back(isOpen ? "open" : "closed"); });
  const auto update =
      menu.needsUpdatePublisher().subscribe([&](std::monostate) { seen.push_back("update"); });
  menu.needsUpdate();
  menu.willOpen();
  EXPECT_TRUE(menu.isOpen());
  menu.didClose();
  EXPECT_THAT(seen, ElementsAreArray({"closed", "update", "onUpdate", "open", "closed"}));
}

}  // namespace
}  // namespace kelvane
