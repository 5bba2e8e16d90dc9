#include "platform/linux/drawing/linux_graphics.h"

#include <limits>

#include <gtest/gtest.h>

#include "platform/linux/drawing/pinned_fonts.h"
#include "platform/linux/drawing/text_layout.h"

namespace kelvane {
namespace {

// DejaVu Sans has 2048 units to the em; its digits are 1303 wide, ascent and descent 1901 and 483.
constexpr double kDigit = 1303 / 2048.0;
constexpr double kLine = (1901 + 483) / 2048.0;

class LinuxGraphicsTest : public ::testing::Test {
 protected:
  static TextStyle style(double size, double kern = 0) {
    TextStyle result;
    result.size = size;
    result.weight = FontWeight::medium;
    result.kern = kern;
    return result;
  }
  double advance(std::string_view text, double size, double kern = 0) {
    return layOutLine(faces_, text, style(size, kern)).advance;
  }

  PinnedFonts fonts_{{"DejaVu Sans"}};
  FontFaces faces_;
  LinuxGraphics graphics_{faces_};
};

TEST_F(LinuxGraphicsTest, inkNarrowsWithEveryStepOfTheSize) {
  for (const char* text : {"57\uFE6A", "100\uFE6A", "2:05", "\u2026"}) {
    const Rect whole = graphics_.inkBounds(text, style(10));
    double previous = std::numeric_limits<double>::infinity();
    for (double size = 13; size > 0.1; size -= 0.2) {
      const Rect ink = graphics_.inkBounds(text, style(size));
      EXPECT_LT(ink.width, previous) << text << " at " << size;
      EXPECT_NEAR(ink.width / size, whole.width / 10, 1e-9);
      EXPECT_NEAR(ink.height / size, whole.height / 10, 1e-9);
      previous = ink.width;
    }
  }
}

// In the units of DejaVu Sans: "g" goes from 113, -426 to 1114, 1147, "-" from 100, 479 to 639,
// 643.
TEST_F(LinuxGraphicsTest, inkIsTheBoxOfWhatIsDrawn) {
  const auto units = [&](const char* text) { return graphics_.inkBounds(text, style(2048)); };
  EXPECT_EQ(units("g"), (Rect{113, -426, 1001, 1573}));
  EXPECT_EQ(units("-"), (Rect{100, 479, 539, 164}));
}

TEST_F(LinuxGraphicsTest, nothingMeasuresNothing) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (const double size : {0.0, -0.2, -10.0, nan}) {
    EXPECT_EQ(graphics_.inkBounds("57", style(size, -0.4)), Rect()) << size;
    EXPECT_EQ(graphics_.lineBounds({{{"57", size, FontWeight::regular, {}}}}), Size()) << size;
  }
  for (const char* text : {"", " ", "\uFE0E"}) {
    EXPECT_EQ(graphics_.inkBounds(text, style(10)), Rect()) << text;
  }
  EXPECT_EQ(graphics_.lineBounds({}), Size());
}

TEST_F(LinuxGraphicsTest, kernFollowsEveryCharacter) {
  EXPECT_NEAR(advance("57", 10), 20 * kDigit, 1e-9);
  EXPECT_NEAR(advance("57", 10, -0.4), 20 * kDigit - 0.8, 1e-9);
  const double loose = graphics_.inkBounds("577", style(10)).width;
  const double tight = graphics_.inkBounds("577", style(10, -0.4)).width;
  EXPECT_NEAR(loose - tight, 0.8, 1e-9);  // the last kern moves no ink
}

TEST_F(LinuxGraphicsTest, replacedCharactersAreMeasuredAsDrawn) {
  const double percent = advance("%", 10);
  EXPECT_NEAR(advance("\uFE6A", 10), 0.78 * percent + 2, 1e-9);
  EXPECT_NEAR(advance("\uFE6A", 10, -0.4), 0.78 * percent + 2 - 0.4, 1e-9);
  EXPECT_NEAR(graphics_.inkBounds("\uFE6A", style(10)).height,
              0.78 * graphics_.inkBounds("%", style(10)).height, 1e-9);
  EXPECT_NEAR(advance("\u26A1\uFE0E ", 10, -0.4), advance("\u26A1 ", 10, -0.4), 1e-9);
}

TEST_F(LinuxGraphicsTest, linesAddTheirRunsUp) {
  const TextRun small{"57", 11.0, FontWeight::regular, {}};
  const TextRun plain{"57", {}, FontWeight::regular, {}};
  const struct {
    AttributedText text;
    Size size;
  } rows[] = {
      {{{small}}, {2 * kDigit * 11, kLine * 11}},
      {{{plain}}, {2 * kDigit * 13, kLine * 13}},
      {{{small, plain}}, {2 * kDigit * 24, kLine * 13}},
  };
  for (const auto& row : rows) {
    const Size size = graphics_.lineBounds(row.text);
    EXPECT_NEAR(size.width, row.size.width, 1e-9);
    EXPECT_NEAR(size.height, row.size.height, 1e-9);
  }
  EXPECT_EQ(graphics_.smallSystemFontSize(), 11);
}

}  // namespace
}  // namespace kelvane
