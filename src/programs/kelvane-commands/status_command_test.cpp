#include "programs/kelvane-commands/status_command.h"

#include <string>

#include <gtest/gtest.h>

#include "battery/battery.h"
#include "platform/memory/memory_computer.h"
#include "settings/settings_keys.h"

namespace kelvane {
namespace {

TEST(StatusLine, ForEachState) {
  MemoryComputer computer;
  const SettingsKeys settings(computer.preferences);
  const Battery battery(computer.registry, computer.powerSources, computer.runLoop);
  struct Row {
    MemoryBattery battery;
    std::string text, styleClass;
    int percentage;
  };
  constexpr auto kEarly = BatteryWarningLevel::early;
  constexpr auto kFinal = BatteryWarningLevel::final;
  const Row rows[] = {
      {{.percent = 57, .estimate = 7500}, "57﹪", "discharging", 57},
      {{.percent = 12, .warning = kEarly}, "12﹪", "early", 12},
      {{.percent = 4, .warning = kFinal}, "4﹪", "final", 4},
      {{.percent = 4, .isOnPower = true, .warning = kFinal}, "⚡︎ 4﹪", "charging", 4},
      {{.percent = 80, .isOnPower = true, .isCharging = false}, "⚡︎ 80﹪", "plugged", 80},
      {{.percent = 100, .isOnPower = true}, "⚡︎ 100﹪", "full", 100},
  };
  for (const Row& row : rows) {
    computer.set(row.battery);
    const StatusLine line =
        makeStatusLine({battery, settings, computer.graphics},
                       {battery, computer.runLoop, computer.systemInfo, computer.textFormats, {}});
    EXPECT_EQ(line.text, row.text);
    EXPECT_EQ(line.styleClass, row.styleClass);
    EXPECT_EQ(line.percentage, row.percentage);
    EXPECT_NE(line.tooltip.find(battery.powerSourceName()), std::string::npos);
  }
}

TEST(StatusLine, JsonIsOneLineInTheOrderBarsShow) {
  EXPECT_EQ(jsonOf({"57%", "a \"b\"\nc\xff", "discharging", 57}),
            R"({"text":"57%","tooltip":"a \"b\"\nc)"
            "\uFFFD"
            R"(","class":"discharging","percentage":57})");
}

}  // namespace
}  // namespace kelvane
