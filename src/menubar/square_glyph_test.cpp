#include "menubar/square_glyph.h"

#include <string>

#include <gtest/gtest.h>

#include "menubar/item_fixture_test.h"

namespace kelvane {
namespace {

using SquareGlyph = ItemTest;

constexpr Slot kSlot{.shape = Slot::Shape::square, .height = 22};

TEST_F(SquareGlyph, ShowsTheSameInAllModes) {
  struct Row {
    MemoryBattery battery;
    bool showsPercentage, isText;
    std::string text;  // the gauge comes after it in icon mode
  };
  const Row rows[] = {
      {{.percent = 57}, true, false, "57"},
      {{.percent = 100, .isOnPower = true}, true, false, "100"},
      {{.percent = 57, .estimate = 7500}, false, false, "2:05"},
      {{.percent = 100, .isOnPower = true}, false, false, "∞"},
      {{.percent = 57, .estimate = 7500}, false, true, "2:05"},
      {{.percent = 57}, true, true, "57"},
  };
  for (const Row& row : rows) {
    set(row.battery);
    settings.showPercentage.set(row.showsPercentage);
    settings.textOnlyIcon.set(row.isText);
    const Image image = makeSquareImage(context, kSlot);
    EXPECT_EQ(image.size, (Size{22, 22}));
    const auto commands = record(image);
    ASSERT_EQ(commands.size(), row.isText ? 2U : 3U);
    EXPECT_EQ(commands[1].what, row.text);
    if (!row.isText) {
      EXPECT_EQ(commands[2].what, "Gauge");
    }
  }
}

TEST_F(SquareGlyph, TextStaysInsideTheSquareAtEverySize) {
  set({.percent = 100});
  for (const double height : {16.0, 22.0, 24.0, 32.0}) {
    const auto commands =
        record(makeSquareImage(context, {.shape = Slot::Shape::square, .height = height}));
    const DrawCommand& text = commands[1];
    const Rect ink = graphics.inkBounds(text.what, text.style);
    EXPECT_LE(ink.width, height);
    EXPECT_GT(ink.width, 0.7 * height);
    EXPECT_GE(text.rect.y, 8 * height / 22);
    EXPECT_LE(text.rect.y + ink.height, height);
  }
}

TEST_F(SquareGlyph, IsTheGaugeAloneBesideATextOfTheHost) {
  Slot slot = kSlot;
  slot.showsTextBeside = true;
  const auto commands = record(makeSquareImage(context, slot));
  ASSERT_EQ(commands.size(), 2U);
  EXPECT_EQ(commands[1].what, "Gauge");
}

}  // namespace
}  // namespace kelvane
