#include "menubar/square_glyph.h"

#include <cmath>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "menubar/item_fixture_test.h"

namespace kelvane {
namespace {

using SquareGlyph = ItemTest;

constexpr Slot kSlot{.shape = Slot::Shape::square, .height = 22};

std::vector<std::string> drawn(const Image& image, double scale = 1) {
  std::vector<std::string> result;
  for (const DrawCommand& command : record(image, scale))
    if (!command.what.empty()) result.push_back(command.what);
  return result;
}

TEST_F(SquareGlyph, ShowsTheSameInAllModes) {
  struct Row {
    MemoryBattery battery;
    bool showsPercentage, showsSign, isText;
    std::vector<std::string> drawn;
    bool isBesideText = false;  // which the host shows
  };
  const std::string frame = "GaugeFrame", level = "GaugeLevel", bolt = "SquareBolt",
                    plug = "SquarePlug", sign = "PercentSign";
  const MemoryBattery half{.percent = 57, .estimate = 7500},
      charging{.percent = 57, .isOnPower = true}, full{.percent = 100, .isOnPower = true};
  const Row rows[] = {
      {half, true, true, false, {frame, level, "57", sign}},
      {half, true, false, false, {frame, level, "57"}},
      {charging, true, true, false, {bolt, frame, level, "57", sign}},
      {full, true, true, false, {plug, frame, level, "100"}},
      {half, false, true, false, {frame, level, "2:05"}},
      {full, false, true, false, {plug, frame, level, "∞"}},
      {half, false, true, true, {"2:05"}},
      {half, true, true, true, {"57", sign}},
      {charging, true, false, true, {bolt, "57"}},
      {full, false, true, true, {bolt, "∞"}},
      {charging, true, true, false, {bolt, frame, level}, true},
      {charging, true, true, true, {bolt}, true},
      {half, true, true, true, {}, true},
      {full, true, true, false, {frame, plug}, true},
  };
  for (const Row& row : rows) {
    set(row.battery);
    settings.showPercentage.set(row.showsPercentage);
    settings.showPercentageSignInIcon.set(row.showsSign);
    settings.textOnlyIcon.set(row.isText);
    Slot slot = kSlot;
    slot.showsTextBeside = row.isBesideText;
    const Image image = makeSquareImage(context, slot);
    EXPECT_EQ(image.size, (Size{22, 22}));
    EXPECT_EQ(drawn(image), row.drawn);
  }
}

TEST_F(SquareGlyph, TextsStayInsideAndOnWholePixelsAtEverySize) {
  for (const double scale : {1.0, 1.5, 2.0}) {
    for (const double height : {16.0, 22.0, 24.0, 32.0}) {
      const Slot slot{.shape = Slot::Shape::square, .height = height};
      for (const int percent : {4, 57, 100}) {
        set({.percent = percent});
        for (const DrawCommand& command : record(makeSquareImage(context, slot), scale)) {
          if (command.kind != DrawCommand::Kind::text) continue;
          const Rect ink = graphics.inkBounds(command.what, command.style);
          const double left = command.rect.x + (command.rect.width - ink.width) / 2;
          EXPECT_GE(left, -1e-9);
          EXPECT_LE(left + ink.width, height + 1e-9);
          EXPECT_GT(command.rect.y, 0.3 * height);  // above the gauge
          EXPECT_LE(command.rect.y + ink.height, height + 1e-9);
          EXPECT_GE(ink.height, 0.22 * height);
          for (const double edge : {command.rect.y * scale, ink.height * scale})
            EXPECT_NEAR(edge, std::round(edge), 1e-6) << height << " at " << scale;
        }
      }
    }
  }
}

TEST_F(SquareGlyph, GivesUpTheSignForLargerDigitsWhereThereAreFewPixels) {
  set({.percent = 57});
  const auto pieces = [&](double scale) {
    return drawn(makeSquareImage(context, {.shape = Slot::Shape::square, .height = 16}), scale);
  };
  EXPECT_EQ(pieces(1).back(), "57");
  EXPECT_EQ(pieces(2).back(), "PercentSign");
}

}  // namespace
}  // namespace kelvane
