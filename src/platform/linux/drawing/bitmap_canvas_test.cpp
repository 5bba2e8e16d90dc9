#include "platform/linux/drawing/bitmap_canvas.h"

#include <cmath>
#include <functional>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "platform/linux/drawing/bitmap.h"
#include "platform/linux/drawing/pinned_fonts.h"

namespace kelvane {
namespace {

using Drawing = std::function<void(Canvas&, const Rect&)>;

constexpr Color kRed{1, 0, 0, 1};
constexpr Color kWhite{1, 1, 1, 1};

std::vector<PathStep> box(double x, double y, double width, double height) {
  using Kind = PathStep::Kind;
  return {{Kind::move, {{{x, y}}}},
          {Kind::line, {{{x + width, y}}}},
          {Kind::line, {{{x + width, y + height}}}},
          {Kind::line, {{{x, y + height}}}},
          {Kind::close, {}}};
}

class BitmapCanvasTest : public ::testing::Test {
 protected:
  Bitmap render(double width, double height, const Drawing& drawing,
                std::optional<Color> foreground = {}, bool isTemplate = false) {
    return renderImage(faces_, {{width, height}, isTemplate, drawing}, 1, foreground);
  }
  // Counted from the lower left corner, as in the canvas.
  static std::uint32_t pixel(const Bitmap& bitmap, int x, int y) {
    return bitmap.pixels.at(static_cast<std::size_t>((bitmap.height - 1 - y) * bitmap.width + x));
  }
  // The box of all pixels that are not fully transparent, from the lower left corner.
  static Rect ink(const Bitmap& bitmap) {
    int left = bitmap.width, right = -1, bottom = bitmap.height, top = -1;
    for (int y = 0; y < bitmap.height; ++y) {
      for (int x = 0; x < bitmap.width; ++x) {
        if (pixel(bitmap, x, y) >> 24 == 0) continue;
        left = std::min(left, x);
        right = std::max(right, x);
        bottom = std::min(bottom, y);
        top = std::max(top, y);
      }
    }
    if (right < 0) return {};
    return {double(left), double(bottom), double(right - left + 1), double(top - bottom + 1)};
  }
  static TextStyle style(double size) {
    TextStyle result;
    result.size = size;
    return result;
  }

  PinnedFonts fonts_{{"DejaVu Sans"}};
  FontFaces faces_;
};

TEST_F(BitmapCanvasTest, opacitiesMultiplyAndLayersFadeTogether) {
  const Picture pair{"pair",
                     {4, 1},
                     {{box(0, 0, 2, 1), 1, {}},
                      {box(1, 0, 3, 1), 1, Color{0, 0, 1, 1}},
                      {box(3, 0, 1, 1), 1, Color{0, 1, 0, 1}}},
                     false};
  const Bitmap half = render(
      4, 1, [&](Canvas& canvas, const Rect& rect) { canvas.drawPicture(pair, rect, 0.5); }, kRed);
  EXPECT_EQ(half.pixels,
            (std::vector<std::uint32_t>{0x80800000, 0x80000080, 0x80000080, 0x80008000}));
  const Picture faint{"faint", {1, 1}, {{box(0, 0, 1, 1), 0.5, {}}}, true};
  const Bitmap quarter =
      render(1, 1, [&](Canvas& canvas, const Rect& rect) { canvas.drawPicture(faint, rect, 0.5); });
  EXPECT_NEAR(quarter.pixels[0] >> 24, 64, 1);
}

TEST_F(BitmapCanvasTest, fillsGoOverWhatIsThereOrStayWithinIt) {
  constexpr auto kOver = CompositeOperation::sourceOver;
  constexpr auto kAtop = CompositeOperation::sourceAtop;
  const struct {
    CompositeOperation operation;
    double alpha;
    std::vector<std::uint32_t> pixels;
  } rows[] = {
      {kOver, 1, {0xFFFF0000, 0xFFFF0000, 0xFFFF0000}},
      {kOver, 0.5, {0xFF80007F, 0xC0800040, 0x80800000}},
      {kAtop, 1, {0xFFFF0000, 0x80800000, 0}},
      {kAtop, 0.5, {0xFF80007F, 0x80400040, 0}},
  };
  for (const auto& row : rows) {
    const Bitmap bitmap = render(3, 1, [&](Canvas& canvas, const Rect& whole) {
      canvas.fill({0, 0, 1, 1}, {0, 0, 1, 1}, kOver);
      canvas.fill({1, 0, 1, 1}, {0, 0, 1, 0.5}, kOver);
      canvas.fill(whole, {1, 0, 0, row.alpha}, row.operation);
    });
    EXPECT_EQ(bitmap.pixels, row.pixels) << row.alpha;
  }
}

TEST_F(BitmapCanvasTest, templatesKeepTheirAlphaAndTakeTheForeground) {
  const Drawing drawing = [](Canvas& canvas, const Rect&) {
    canvas.fill({0, 0, 1, 1}, {0, 1, 0, 1}, CompositeOperation::sourceOver);
    canvas.fill({1, 0, 1, 1}, {0, 0, 0, 0.5}, CompositeOperation::sourceOver);
  };
  using Pixels = std::vector<std::uint32_t>;
  EXPECT_EQ(render(3, 1, drawing, kWhite, true).pixels, (Pixels{0xFFFFFFFF, 0x80808080, 0}));
  EXPECT_EQ(render(3, 1, drawing, Color{1, 0, 0, 0.5}, true).pixels[0], 0x80800000U);
  EXPECT_EQ(render(3, 1, drawing, {}, true).pixels, (Pixels{0xFF00FF00, 0x80000000, 0}));
  EXPECT_EQ(render(3, 1, drawing, kWhite, false).pixels, (Pixels{0xFF00FF00, 0x80000000, 0}));
}

TEST_F(BitmapCanvasTest, textIsCentredOnItsBaselineAndCutOffAtTheSides) {
  const auto at = [&](const Rect& rect) {
    return ink(render(
        40, 30, [&](Canvas& canvas, const Rect&) { canvas.drawText("HH", rect, style(16)); }));
  };
  // Capitals are 1493 of 2048 units high, 11.7 points here; the box's own height does not matter.
  EXPECT_EQ(at({5, 10, 30, 2}).y, 10);
  EXPECT_EQ(at({5, 10, 30, 2}).height, 12);
  const Rect centred = at({5, 10, 30, 20});
  EXPECT_NEAR(centred.x + centred.width / 2, 20, 0.51);
  EXPECT_GT(centred.width, 18);
  const Rect cut = at({16, 10, 8, 20});
  EXPECT_EQ(cut.x, 16);
  EXPECT_EQ(cut.width, 8);
  EXPECT_EQ(cut.height, 12);
}

TEST_F(BitmapCanvasTest, textTakesItsColourOrTheForeground) {
  const auto strongest = [&](std::optional<Color> color) {
    const Bitmap bitmap = render(
        20, 20,
        [&](Canvas& canvas, const Rect& rect) {
          TextStyle bar = style(40);
          bar.color = color;
          canvas.drawText("|", {rect.x, rect.y + 5, rect.width, 10}, bar);
        },
        kWhite);
    return *std::max_element(bitmap.pixels.begin(), bitmap.pixels.end());
  };
  EXPECT_EQ(strongest({}), 0xFFFFFFFFU);
  EXPECT_EQ(strongest(kRed), 0xFFFF0000U);
}

TEST_F(BitmapCanvasTest, aTextTooLongForFreeTypeIsDrawnAsFarAsItGoes) {
  const std::string text(20'000, '8');
  const double length = layOutLine(faces_, text, style(10)).advance;
  const Bitmap bitmap = render(20, 20, [&](Canvas& canvas, const Rect&) {
    canvas.drawText(text, {2, 5, length, 10}, style(10));
    canvas.fill({0, 0, 1, 1}, kRed, CompositeOperation::sourceOver);
  });
  EXPECT_EQ(ink(bitmap).x + ink(bitmap).width, 20);
  EXPECT_EQ(pixel(bitmap, 0, 0), 0xFFFF0000U);  // the sides of the text are not the canvas's
}

TEST_F(BitmapCanvasTest, oneBadNumberDoesNotSpoilTheRest) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const Picture dot{"dot", {1, 1}, {{box(0, 0, 1, 1), 1, {}}}, true};
  const Bitmap bitmap = render(1, 1, [&](Canvas& canvas, const Rect& rect) {
    canvas.drawPicture(dot, {nan, 0, 1, 1}, 1);
    canvas.drawPicture({"none", {0, 0}, dot.layers, true}, rect, 1);
    canvas.drawPicture(dot, {0, 0, 0, 0}, 1);
    canvas.drawText("5", {0, nan, 1, 1}, style(10));
    canvas.fill({0, 0, nan, 1}, kRed, CompositeOperation::sourceOver);
    canvas.drawPicture(dot, rect, 1);
  });
  EXPECT_EQ(bitmap.pixels[0], 0xFF000000U);
}

}  // namespace
}  // namespace kelvane
