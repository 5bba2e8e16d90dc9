#include "menubar/item_text.h"

#include <algorithm>
#include <cmath>
#include <string>

#include <gtest/gtest.h>

#include "menubar/colors.h"
#include "menubar/item_fixture_test.h"

namespace kelvane {
namespace {

using ItemText = ItemTest;

TEST_F(ItemText, TitleOfTheTextMode) {
  struct Row {
    MemoryBattery battery;
    bool showsPercentage, showsSign;
    std::string expected;
  };
  const Row rows[] = {
      {{.percent = 57}, true, true, "57﹪"},
      {{.percent = 57}, true, false, "57"},
      {{.percent = 57, .isOnPower = true}, true, true, "⚡︎ 57﹪"},
      {{.percent = 57, .isOnPower = true}, true, false, "⚡︎ 57"},
      {{.percent = 100, .isOnPower = true}, true, true, "⚡︎ 100﹪"},
      {{.percent = 100, .isOnPower = true}, false, true, "⚡︎ ∞"},
      {{.percent = 100, .estimate = 7500}, false, true, "2:05"},
      {{.percent = 57}, false, false, "…"},
      {{.percent = 57, .isOnPower = true, .minutesUntilFull = 45}, false, true, "⚡︎ 0:45"},
  };
  for (const Row& row : rows) {
    set(row.battery);
    settings.showPercentage.set(row.showsPercentage);
    settings.showPercentageSignInIcon.set(row.showsSign);
    EXPECT_EQ(itemText(context), row.expected);
  }
}

TEST_F(ItemText, UnreadableBatteryIsFullOnPower) {
  registry.properties.clear();
  powerSources.sources.clear();
  powerSources.warning = BatteryWarningLevel::final;
  EXPECT_EQ(itemText(context), "⚡︎ 100﹪");
  EXPECT_EQ(lowBatteryColor(context), nullptr);
}

TEST_F(ItemText, WarningColorsOnlyOnBattery) {
  struct Row {
    BatteryWarningLevel warning;
    bool isOnPower;
    const char* expected;
  };
  const Row rows[] = {
      {BatteryWarningLevel::none, false, nullptr},
      {BatteryWarningLevel::early, false, "EarlyLowBattery"},
      {BatteryWarningLevel::final, false, "FinalLowBattery"},
      {BatteryWarningLevel::early, true, nullptr},
      {BatteryWarningLevel::final, true, nullptr},
  };
  for (const Row& row : rows) {
    set({.percent = 9, .isOnPower = row.isOnPower, .warning = row.warning});
    const NamedColor* color = lowBatteryColor(context);
    ASSERT_EQ(color != nullptr, row.expected != nullptr);
    if (color) {
      EXPECT_EQ(color->name, row.expected);
    }
  }
}

TEST_F(ItemText, TitleCarriesColorAndSizeAndTheItemItsLength) {
  set({.percent = 9, .warning = BatteryWarningLevel::final});
  AttributedText title = makeTitle(context, Appearance::dark);
  ASSERT_EQ(title.runs.size(), 1U);
  EXPECT_EQ(title.runs[0].color, namedColor("FinalLowBattery").dark);
  EXPECT_EQ(title.runs[0].fontSize, 11.0);
  // Two characters of 0.6 × 11, rounded up, plus 3.
  EXPECT_EQ(textItemLength(context, title), 14 + 3);

  settings.smallMenuBarText.set(false);
  set({.percent = 9});
  title = makeTitle(context, Appearance::light);
  EXPECT_EQ(title.runs[0].color, std::nullopt);
  EXPECT_EQ(title.runs[0].fontSize, std::nullopt);
  EXPECT_EQ(textItemLength(context, title), 16 + 8);
}

// The ratio by which WCAG 2 judges the legibility of text.
double contrast(const Color& a, const Color& b) {
  const auto luminance = [](const Color& color) {
    const auto linear = [](double c) {
      return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
  };
  const double first = luminance(a), second = luminance(b);
  return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

TEST(Colors, AreLegibleOnTheirBars) {
  for (const char* name : {"EarlyLowBattery", "FinalLowBattery"}) {
    EXPECT_GT(contrast(namedColor(name).light, {1, 1, 1}), 4.5) << name;
    EXPECT_GT(contrast(namedColor(name).dark, {0.16, 0.16, 0.17}), 4.5) << name;
  }
  EXPECT_DEATH(namedColor("NoColor"), "no colour is named NoColor");
}

}  // namespace
}  // namespace kelvane
