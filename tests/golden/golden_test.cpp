// The item in the states that people see, compared with pictures that somebody has looked at.
//
// `make golden` writes them anew; look at each before committing. The font is pinned, and a pixel
// may differ a little, as FreeType's versions round differently.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "menubar/pictures.h"
#include "platform/linux/drawing/png_file.h"
#include "platform/linux/drawing/png_reader_test.h"
#include "platform/memory/memory_power.h"
#include "platform/memory/memory_preferences.h"
#include "programs/kelvane-commands/item_sketch.h"

namespace kelvane {
namespace {

struct GoldenState {
  std::string name;
  MemoryBattery battery;
  PropertyDictionary settings;
  Slot::Shape shape = Slot::Shape::wide;
  Appearance bar = Appearance::light;
  double height = 22;
  bool showsTextBeside = false;
};

void PrintTo(const GoldenState& state, std::ostream* out) { *out << state.name; }

constexpr auto kEarly = BatteryWarningLevel::early;
constexpr auto kFinal = BatteryWarningLevel::final;
constexpr auto kSquare = Slot::Shape::square;
constexpr auto kDarkBar = Appearance::dark;

const std::vector<GoldenState> kStates = {
    {"percentage", {.percent = 57}},
    {"percentage-dark", {.percent = 57}, {}, Slot::Shape::wide, kDarkBar},
    {"percentage-one-digit", {.percent = 7}},
    {"percentage-no-sign", {.percent = 57}, {{"showPercentageSignInIcon", false}}},
    {"percentage-100-on-battery", {.percent = 100}},
    {"charging", {.percent = 99, .isOnPower = true}},
    {"charging-dark", {.percent = 42, .isOnPower = true}, {}, Slot::Shape::wide, kDarkBar},
    {"held-at-limit", {.percent = 80, .isOnPower = true, .isCharging = false}},
    {"full-on-power", {.percent = 100, .isOnPower = true}},
    {"full-on-power-large", {.percent = 100, .isOnPower = true}, {{"largeIcon", true}}},
    {"time", {.percent = 57, .estimate = 7500}, {{"showPercentage", false}}},
    {"time-hours", {.percent = 90, .estimate = 39600}, {{"showPercentage", false}}},
    {"time-unknown", {.percent = 57}, {{"showPercentage", false}}},
    {"time-until-full",
     {.percent = 57, .isOnPower = true, .minutesUntilFull = 45},
     {{"showPercentage", false}}},
    {"old-style", {.percent = 57}, {{"oldIconStyle", true}}},
    {"old-style-charging", {.percent = 57, .isOnPower = true}, {{"oldIconStyle", true}}},
    {"old-style-large", {.percent = 57}, {{"oldIconStyle", true}, {"largeIcon", true}}},
    {"large", {.percent = 57}, {{"largeIcon", true}}},
    {"large-charging", {.percent = 57, .isOnPower = true}, {{"largeIcon", true}}},
    {"early-warning", {.percent = 12, .warning = kEarly}},
    {"early-warning-dark", {.percent = 12, .warning = kEarly}, {}, Slot::Shape::wide, kDarkBar},
    {"final-warning", {.percent = 4, .warning = kFinal}},
    {"final-warning-dark", {.percent = 4, .warning = kFinal}, {}, Slot::Shape::wide, kDarkBar},
    {"text", {.percent = 57}, {{"textOnlyIcon", true}}},
    {"text-on-power", {.percent = 57, .isOnPower = true}, {{"textOnlyIcon", true}}},
    {"text-full-time",
     {.percent = 100, .isOnPower = true},
     {{"textOnlyIcon", true}, {"showPercentage", false}, {"smallMenuBarText", false}}},
    {"square", {.percent = 57}, {}, kSquare},
    {"square-charging", {.percent = 57, .isOnPower = true}, {}, kSquare, kDarkBar},
    {"square-full", {.percent = 100, .isOnPower = true}, {}, kSquare},
    {"square-time", {.percent = 57, .estimate = 7500}, {{"showPercentage", false}}, kSquare},
    {"square-final-warning", {.percent = 4, .warning = kFinal}, {}, kSquare},
    {"square-text", {.percent = 57}, {{"textOnlyIcon", true}}, kSquare},
    {"square-text-on-power", {.percent = 57, .isOnPower = true}, {{"textOnlyIcon", true}}, kSquare},
    {"square-old-style", {.percent = 57}, {{"oldIconStyle", true}}, kSquare},
    {"square-large", {.percent = 57}, {{"largeIcon", true}}, kSquare},
    {"square-tall", {.percent = 57, .isOnPower = true}, {}, kSquare, kDarkBar, 32},
    {"square-small", {.percent = 57, .isOnPower = true}, {}, kSquare, kDarkBar, 16},
    {"square-small-time",
     {.percent = 57, .estimate = 7500},
     {{"showPercentage", false}},
     kSquare,
     kDarkBar,
     16},
    {"body", {.percent = 57}, {}, kSquare, kDarkBar, 16, true},
    {"body-large", {.percent = 57}, {{"largeIcon", true}}, kSquare, kDarkBar, 16, true},
    {"body-charging", {.percent = 57, .isOnPower = true}, {}, kSquare, kDarkBar, 16, true},
    {"body-full", {.percent = 100, .isOnPower = true}, {}, kSquare, kDarkBar, 16, true},
    {"body-final-warning", {.percent = 4, .warning = kFinal}, {}, kSquare, kDarkBar, 16, true},
    {"body-of-text-on-power",
     {.percent = 57, .isOnPower = true},
     {{"textOnlyIcon", true}},
     kSquare,
     kDarkBar,
     16,
     true},
};

Bitmap render(const GoldenState& state, double scale) {
  MemoryDeviceRegistry registry;
  MemoryPowerSources powerSources;
  state.battery.apply(registry, powerSources);
  MemoryPreferences preferences(state.settings);
  FontFaces fonts("DejaVu Sans");
  const Slot slot{state.shape, state.height, scale, state.showsTextBeside};
  return sketchItem(registry, powerSources, preferences, fonts, {slot, state.bar});
}

// The largest difference of any channel of any pixel, and their mean over all.
struct Difference {
  int largest = 0;
  double mean = 0;
};

Difference difference(const Bitmap& a, const Bitmap& b) {
  Difference result;
  double sum = 0;
  for (std::size_t i = 0; i < a.pixels.size(); ++i) {
    for (unsigned shift = 0; shift < 32; shift += 8) {
      const int channel = std::abs(static_cast<int>((a.pixels[i] >> shift) & 0xFFU) -
                                   static_cast<int>((b.pixels[i] >> shift) & 0xFFU));
      result.largest = std::max(result.largest, channel);
      sum += channel;
    }
  }
  result.mean = sum / (4.0 * static_cast<double>(a.pixels.size()));
  return result;
}

// Compares with the golden picture of this name, or becomes it.
void expectGolden(const Bitmap& actual, const std::string& name) {
  const auto golden = std::filesystem::path(KELVANE_GOLDEN_PICTURES) / name;
  if (std::getenv("KELVANE_WRITE_GOLDEN")) {
    ASSERT_EQ(writePng(actual, golden), std::nullopt);
  }
  const auto expected = readPng(golden);
  ASSERT_TRUE(expected.has_value()) << golden << " is missing or no picture";
  const bool isAlike = actual.width == expected->width && actual.height == expected->height &&
                       difference(actual, *expected).largest <= 40 &&
                       difference(actual, *expected).mean <= 0.6;
  const auto left = std::filesystem::path(KELVANE_ACTUAL_PICTURES) / name;
  if (!isAlike) writePng(actual, left);
  EXPECT_TRUE(isAlike) << name << " looks different now: " << left;
}

std::string fileName(const std::string& name, int scale) {
  return name + "@" + std::to_string(scale) + "x.png";
}

class GoldenTest : public ::testing::TestWithParam<GoldenState> {};

TEST_P(GoldenTest, LooksAsItDid) {
  for (const int scale : {1, 2})
    expectGolden(render(GetParam(), scale), fileName(GetParam().name, scale));
}

TEST(GoldenAlertIcon, LooksAsItDid) {
  const Picture& picture = namedPicture("LowBatteryIcon");
  FontFaces fonts("DejaVu Sans");
  const Image image{picture.size, false, [&picture](Canvas& canvas, const Rect& rect) {
                      canvas.drawPicture(picture, rect, 1);
                    }};
  for (const int scale : {1, 2})
    expectGolden(renderImage(fonts, image, scale, {}), fileName("low-battery-icon", scale));
}

INSTANTIATE_TEST_SUITE_P(States, GoldenTest, ::testing::ValuesIn(kStates), [](const auto& state) {
  std::string name = state.param.name;
  std::ranges::replace(name, '-', '_');
  return name;
});

}  // namespace
}  // namespace kelvane
