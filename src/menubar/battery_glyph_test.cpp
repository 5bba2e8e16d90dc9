#include "menubar/battery_glyph.h"

#include <string>

#include <gtest/gtest.h>

#include "menubar/item_fixture_test.h"
#include "menubar/pictures.h"

namespace kelvane {
namespace {

using Glyph = ItemTest;

struct Body {
  std::string picture;
  Size size;
  double opacity;
};
const Body kPlain{"BatteryIcon", {28, 14}, 0.5}, kStrong{"BatteryIcon", {28, 14}, 0.9};
const Body kLarge{"BatteryIcon", {30.8, 15.4}, 0.9};
const Body kBolt{"BatteryChargingIcon", {36, 14}, 0.5};
const Body kLargeBolt{"BatteryChargingIcon", {39.6, 15.4}, 0.5};

const PropertyDictionary kNoSign{{"showPercentageSignInIcon", false}};
const PropertyDictionary kTime{{"showPercentage", false}, {"showPercentageSignInIcon", false}};
const PropertyDictionary kOld{{"oldIconStyle", true}}, kGrown{{"largeIcon", true}};
const PropertyDictionary kOldAndGrown{{"oldIconStyle", true}, {"largeIcon", true}};

const MemoryBattery kHalf{.percent = 57}, kWhole{.percent = 100};
const MemoryBattery kTimed{.percent = 57, .estimate = 7500};
const MemoryBattery kCharging{.percent = 99, .isOnPower = true};
const MemoryBattery kFull{.percent = 100, .isOnPower = true};
const MemoryBattery kHeld{.percent = 80, .isOnPower = true, .isCharging = false};

// Text on this computer is 0.6 of its size wide and 0.7 high, plus the kern. The box begins at 2.7,
// and a text's y is that of one centred in it plus its nudge.
const struct {
  const char* what;
  MemoryBattery battery;
  PropertyDictionary settings;
  // What is drawn.
  Body body;
  std::string text;  // or "PowerIcon"
  Rect rect;
  double fontSize = 10, kern = -0.4;
} kRows[] = {
    {"nudged for the narrow sign", kHalf, {}, kPlain, "57﹪", {3.9, 3.8, 20.6, 8.6}},
    {"without sign, lowered", kHalf, kNoSign, kPlain, "57", {2.7, 3.7, 20.6, 8.6}},
    {"its own nudge, shrunk", kWhole, {}, kPlain, "100﹪", {2.9, 4.25, 20.6, 8.6}, 9},
    {"no special text", kWhole, kNoSign, kPlain, "100", {2.7, 3.7, 20.6, 8.6}},
    {"moved right by the bolt", kCharging, {}, kBolt, "99﹪", {11.9, 3.8, 20.6, 8.6}},
    {"held below full: still the bolt", kHeld, {}, kBolt, "80﹪", {11.9, 3.8, 20.6, 8.6}},
    {"the bolt unscaled", kCharging, kGrown, kLargeBolt, "99﹪", {12.1, 4.25, 24.2, 10}, 11},
    {"old style", kHalf, kOld, kStrong, "57﹪", {3.9, 3.975, 20.6, 8.6}, 9.5, -0.2},
    {"both", kHalf, kOldAndGrown, kLarge, "57﹪", {4.1, 4.4425, 23.4, 10}, 10.45, -0.2},
    {"neither nudged nor lowered", kTimed, kTime, kPlain, "2:05", {2.7, 4.15, 20.6, 8.6}, 9},
    {"unknown time", kHalf, kTime, kPlain, "…", {2.7, 3.8, 20.6, 8.6}},
    {"the plug for any text", kFull, kTime, kStrong, "PowerIcon", {7.05, 2.8, 11.9, 8.4}},
};

void expectRect(const Rect& actual, const Rect& expected) {
  EXPECT_NEAR(actual.x, expected.x, 1e-9);
  EXPECT_NEAR(actual.y, expected.y, 1e-9);
  EXPECT_NEAR(actual.width, expected.width, 1e-9);
  EXPECT_NEAR(actual.height, expected.height, 1e-9);
}

TEST_F(Glyph, IsDrawnAsTheBatteryAndTheSettingsSay) {
  for (const auto& [name, state, values, body, text, rect, fontSize, kern] : kRows) {
    SCOPED_TRACE(name);
    set(state);
    for (const auto& [key, value] : values) preferences.setObject(key, value);

    const Image image = makeGlyphImage(context);
    const Rect whole{0, 0, body.size.width, body.size.height};
    expectRect({0, 0, image.size.width, image.size.height}, whole);
    const auto commands = record(image);
    ASSERT_EQ(commands.size(), 3U);
    EXPECT_EQ(commands[0].kind, DrawCommand::Kind::interpolation);
    EXPECT_EQ(commands[0].interpolation, ImageInterpolation::high);
    EXPECT_EQ(commands[1].what, body.picture);
    EXPECT_EQ(commands[1].opacity, body.opacity);
    expectRect(commands[1].rect, whole);
    EXPECT_EQ(commands[2].what, text);
    expectRect(commands[2].rect, rect);
    for (const auto& [key, value] : values) preferences.removeObject(key);
    if (commands[2].kind != DrawCommand::Kind::text) continue;
    EXPECT_NEAR(commands[2].style.size, fontSize, 1e-9);
    EXPECT_NEAR(commands[2].style.kern, kern, 1e-9);
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
