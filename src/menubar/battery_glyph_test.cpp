#include "menubar/battery_glyph.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "menubar/item_fixture_test.h"
#include "menubar/pictures.h"

namespace kelvane {
namespace {

using Glyph = ItemTest;

struct GlyphRow {
  std::string name;
  MemoryBattery battery;
  // Settings that differ from their defaults.
  bool showsTime = false, hidesSign = false, isOldStyle = false, isLarge = false;
  // What is drawn.
  std::string body;
  Rect bodyRect;
  double bodyOpacity;
  std::string text;  // or "PowerIcon"
  Rect rect;
  double fontSize = 0, kern = 0;
};

// Text on this computer is 0.6 of its size wide and 0.7 high, plus the kern.
const std::vector<GlyphRow> kRows = {
    {.name = "percentage, nudged for the narrow sign",
     .battery = {.percent = 57},
     .body = "BatteryIcon",
     .bodyRect = {0, 0, 28, 14},
     .bodyOpacity = 0.5,
     .text = "57﹪",
     .rect = {3.9, 3.8, 20.6, 8.6},
     .fontSize = 10,
     .kern = -0.4},
    {.name = "without sign, lowered",
     .battery = {.percent = 57},
     .hidesSign = true,
     .body = "BatteryIcon",
     .bodyRect = {0, 0, 28, 14},
     .bodyOpacity = 0.5,
     .text = "57",
     .rect = {2.7, 3.7, 20.6, 8.6},
     .fontSize = 10,
     .kern = -0.4},
    {.name = "one hundred on battery, with its own nudge, shrunk from 10 to 9.0",
     .battery = {.percent = 100},
     .body = "BatteryIcon",
     .bodyRect = {0, 0, 28, 14},
     .bodyOpacity = 0.5,
     .text = "100﹪",
     .rect = {2.9, 2.7 + (8.6 - 0.7 * 9.0) / 2 + 0.4, 20.6, 8.6},
     .fontSize = 9.0,
     .kern = -0.4},
    {.name = "one hundred without its sign is no special text",
     .battery = {.percent = 100},
     .hidesSign = true,
     .body = "BatteryIcon",
     .bodyRect = {0, 0, 28, 14},
     .bodyOpacity = 0.5,
     .text = "100",
     .rect = {2.7, 3.7, 20.6, 8.6},
     .fontSize = 10,
     .kern = -0.4},
    {.name = "charging: the box moves right by the bolt",
     .battery = {.percent = 99, .isOnPower = true},
     .body = "BatteryChargingIcon",
     .bodyRect = {0, 0, 36, 14},
     .bodyOpacity = 0.5,
     .text = "99﹪",
     .rect = {11.9, 3.8, 20.6, 8.6},
     .fontSize = 10,
     .kern = -0.4},
    {.name = "plugged in below full without charging still shows the bolt",
     .battery = {.percent = 80, .isOnPower = true, .isCharging = false},
     .body = "BatteryChargingIcon",
     .bodyRect = {0, 0, 36, 14},
     .bodyOpacity = 0.5,
     .text = "80﹪",
     .rect = {11.9, 3.8, 20.6, 8.6},
     .fontSize = 10,
     .kern = -0.4},
    {.name = "large while charging: the bolt's width stays unscaled",
     .battery = {.percent = 99, .isOnPower = true},
     .isLarge = true,
     .body = "BatteryChargingIcon",
     .bodyRect = {0, 0, 39.6, 15.4},
     .bodyOpacity = 0.5,
     .text = "99﹪",
     .rect = {2.7 + 8 + 1.4, 2.7 + (10.0 - 7.7) / 2 + 0.4, 24.2, 10.0},
     .fontSize = 11,
     .kern = -0.4},
    {.name = "old style",
     .battery = {.percent = 57},
     .isOldStyle = true,
     .body = "BatteryIcon",
     .bodyRect = {0, 0, 28, 14},
     .bodyOpacity = 0.9,
     .text = "57﹪",
     .rect = {3.9, 2.7 + (8.6 - 6.65) / 2 + 0.3, 20.6, 8.6},
     .fontSize = 9.5,
     .kern = -0.2},
    {.name = "old style, large",
     .battery = {.percent = 57},
     .isOldStyle = true,
     .isLarge = true,
     .body = "BatteryIcon",
     .bodyRect = {0, 0, 30.8, 15.4},
     .bodyOpacity = 0.9,
     .text = "57﹪",
     .rect = {4.1, 2.7 + (10.0 - 0.7 * 10.45) / 2 + 0.4, 23.4, 10.0},
     .fontSize = 10.45,
     .kern = -0.2},
    {.name = "time, neither nudged nor lowered",
     .battery = {.percent = 57, .estimate = 7500},
     .showsTime = true,
     .hidesSign = true,
     .body = "BatteryIcon",
     .bodyRect = {0, 0, 28, 14},
     .bodyOpacity = 0.5,
     .text = "2:05",
     .rect = {2.7, 2.7 + (8.6 - 6.3) / 2 + 0.3, 20.6, 8.6},
     .fontSize = 9.0,
     .kern = -0.4},
    {.name = "unknown time",
     .battery = {.percent = 57},
     .showsTime = true,
     .body = "BatteryIcon",
     .bodyRect = {0, 0, 28, 14},
     .bodyOpacity = 0.5,
     .text = "…",
     .rect = {2.7, 3.8, 20.6, 8.6},
     .fontSize = 10,
     .kern = -0.4},
    {.name = "full on power: the plug instead of any text",
     .battery = {.percent = 100, .isOnPower = true},
     .showsTime = true,
     .body = "BatteryIcon",
     .bodyRect = {0, 0, 28, 14},
     .bodyOpacity = 0.9,
     .text = "PowerIcon",
     .rect = {2.7 + (20.6 - 11.9) / 2, 2.7 + (8.6 - 8.4) / 2, 11.9, 8.4}},
};

void expectRect(const Rect& actual, const Rect& expected) {
  EXPECT_NEAR(actual.x, expected.x, 1e-9);
  EXPECT_NEAR(actual.y, expected.y, 1e-9);
  EXPECT_NEAR(actual.width, expected.width, 1e-9);
  EXPECT_NEAR(actual.height, expected.height, 1e-9);
}

TEST_F(Glyph, IsDrawnAsTheBatteryAndTheSettingsSay) {
  for (const GlyphRow& row : kRows) {
    SCOPED_TRACE(row.name);
    set(row.battery);
    settings.showPercentage.set(!row.showsTime);
    settings.showPercentageSignInIcon.set(!row.hidesSign);
    settings.oldIconStyle.set(row.isOldStyle);
    settings.largeIcon.set(row.isLarge);

    const Image image = makeGlyphImage(context);
    expectRect({0, 0, image.size.width, image.size.height}, row.bodyRect);
    const auto commands = record(image);
    ASSERT_EQ(commands.size(), 3U);
    EXPECT_EQ(commands[0].kind, DrawCommand::Kind::interpolation);
    EXPECT_EQ(commands[0].interpolation, ImageInterpolation::high);
    EXPECT_EQ(commands[1].what, row.body);
    EXPECT_EQ(commands[1].opacity, row.bodyOpacity);
    expectRect(commands[1].rect, row.bodyRect);
    EXPECT_EQ(commands[2].what, row.text);
    expectRect(commands[2].rect, row.rect);
    if (commands[2].kind != DrawCommand::Kind::text) continue;
    EXPECT_NEAR(commands[2].style.size, row.fontSize, 1e-9);
    EXPECT_NEAR(commands[2].style.kern, row.kern, 1e-9);
    EXPECT_EQ(commands[2].style.weight, FontWeight::medium);
    EXPECT_EQ(commands[2].style.color, std::nullopt);
  }
}

TEST_F(Glyph, ReadsTheBatteryWhenItIsDrawn) {
  set({.percent = 57});
  const Image image = makeGlyphImage(context);
  set({.percent = 12});
  EXPECT_EQ(record(image).back().what, "12﹪");
}

TEST_F(Glyph, AnEndlessTextShrinksUntilItFits) {
  set({.percent = 57, .estimate = 3600.0 * 1e15});
  settings.showPercentage.set(false);
  const DrawCommand text = record(makeGlyphImage(context)).back();
  EXPECT_EQ(text.what, "1000000000000000h");
  EXPECT_LT(graphics.inkBounds(text.what, text.style).width, 0.99 * 20.6);
}

TEST_F(Glyph, WarningTintIsFilledOverWhatWasDrawn) {
  set({.percent = 5});
  const Image plain = makeGlyphImage(context);
  const Image tinted = warningTinted(plain, {1, 0, 0, 1});
  EXPECT_FALSE(tinted.isTemplate);
  EXPECT_EQ(tinted.size, plain.size);
  const DrawCommand last = record(tinted).back();
  EXPECT_EQ(last.kind, DrawCommand::Kind::fill);
  EXPECT_EQ(last.operation, CompositeOperation::sourceAtop);
  EXPECT_EQ(last.rect, (Rect{0, 0, 28, 14}));
}

TEST_F(Glyph, ItemIsALittleWiderThanALargeGlyph) {
  set({.percent = 57});
  EXPECT_DOUBLE_EQ(iconItemLength(context), 28);
  settings.largeIcon.set(true);
  EXPECT_DOUBLE_EQ(iconItemLength(context), 28 * 1.2);
  set({.percent = 57, .isOnPower = true});
  EXPECT_DOUBLE_EQ(iconItemLength(context), 36 * 1.2);
  set({.percent = 100, .isOnPower = true});
  EXPECT_DOUBLE_EQ(iconItemLength(context), 28 * 1.2);
}

TEST(Pictures, AnUnknownNameEndsTheProcess) {
  EXPECT_DEATH(namedPicture("NoIcon"), "no picture is named NoIcon");
}

}  // namespace
}  // namespace kelvane
