#include "menubar/square_glyph.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "menubar/item_fixture_test.h"

namespace kelvane {
namespace {

using SquareGlyph = ItemTest;

constexpr Slot kSlot{.shape = Slot::Shape::square, .height = 22};

std::vector<std::string> drawn(const Image& image) {
  std::vector<std::string> result;
  for (const DrawCommand& command : record(image))
    if (!command.what.empty()) result.push_back(command.what);
  return result;
}

TEST_F(SquareGlyph, ShowsTheSameInAllModes) {
  struct Row {
    MemoryBattery battery;
    bool showsPercentage, showsSign, isText;
    std::vector<std::string> drawn;
  };
  const Row rows[] = {
      {{.percent = 57}, true, true, false, {"57", "%", "GaugeFrame", "GaugeLevel"}},
      {{.percent = 57}, true, false, false, {"57", "GaugeFrame", "GaugeLevel"}},
      {{.percent = 100, .isOnPower = true}, true, true, false, {"100", "GaugeFrame", "GaugeLevel"}},
      {{.percent = 57, .estimate = 7500}, false, true, false, {"2:05", "GaugeFrame", "GaugeLevel"}},
      {{.percent = 100, .isOnPower = true}, false, true, false, {"∞", "GaugeFrame", "GaugeLevel"}},
      {{.percent = 57, .estimate = 7500}, false, true, true, {"2:05"}},
      {{.percent = 57}, true, true, true, {"57", "%"}},
  };
  for (const Row& row : rows) {
    set(row.battery);
    settings.showPercentage.set(row.showsPercentage);
    settings.showPercentageSignInIcon.set(row.showsSign);
    settings.textOnlyIcon.set(row.isText);
    const Image image = makeSquareImage(context, kSlot);
    EXPECT_EQ(image.size, (Size{22, 22}));
    EXPECT_EQ(drawn(image), row.drawn);
  }
}

TEST_F(SquareGlyph, TextsStayInsideAndApartAtEverySize) {
  for (const double height : {16.0, 22.0, 24.0, 32.0}) {
    for (const int percent : {4, 57, 100}) {
      for (const bool isLarge : {false, true}) {
        set({.percent = percent});
        settings.largeIcon.set(isLarge);
        const auto commands =
            record(makeSquareImage(context, {.shape = Slot::Shape::square, .height = height}));
        double right = 0;
        for (const DrawCommand& command : commands) {
          if (command.kind != DrawCommand::Kind::text) continue;
          const Rect ink = graphics.inkBounds(command.what, command.style);
          const double left = command.rect.x + (command.rect.width - ink.width) / 2;
          EXPECT_GE(left, right);  // of the bar's edge, then of the digits
          right = left + ink.width;
          EXPECT_LE(right, height);
          EXPECT_GE(command.rect.y, 8 * height / 22 - 1e-9);
          EXPECT_LE(command.rect.y + ink.height, height);
        }
        if (percent > 9) {
          EXPECT_GT(right, 0.85 * height);
        }
      }
    }
  }
}

TEST_F(SquareGlyph, EachAppearanceKeyChangesThePicture) {
  set({.percent = 57});
  const auto look = [&] {
    std::string text;
    for (const DrawCommand& command : record(makeSquareImage(context, kSlot)))
      text += command.what + std::to_string(command.rect.x) + std::to_string(command.style.size) +
              std::to_string(command.opacity);
    return text;
  };
  std::string last = look();
  for (const SettingKey<bool>* key :
       {&settings.largeIcon, &settings.oldIconStyle, &settings.showPercentageSignInIcon,
        &settings.showPercentage, &settings.textOnlyIcon, &settings.smallMenuBarText}) {
    key->set(!key->get());
    const std::string now = look();
    EXPECT_NE(now, last) << key->name();
    last = now;
  }
}

TEST_F(SquareGlyph, IsTheGaugeAloneBesideATextOfTheHost) {
  Slot slot = kSlot;
  slot.showsTextBeside = true;
  const auto commands = record(makeSquareImage(context, slot));
  ASSERT_EQ(commands.size(), 3U);
  EXPECT_EQ(commands[1].what, "GaugeFrame");
}

}  // namespace
}  // namespace kelvane
