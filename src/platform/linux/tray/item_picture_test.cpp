#include "platform/linux/tray/item_picture.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace kelvane {
namespace {

const Slot kWide{Slot::Shape::wide, 22, 1, false};
const Slot kSquare{Slot::Shape::square, 22, 1, false};

TEST(ItemPicture, LaysTheImageIntoTheSlot) {
  const struct {
    Slot slot;
    double length;
    Size image;
    ItemLayout expected;
  } cases[] = {
      {kWide, 28, {28, 14}, {{28, 22}, {0, 4, 28, 14}}},
      {kWide, 33, {28, 14}, {{33, 22}, {3, 4, 28, 14}}},  // 2.5 would blur every edge
      {kWide, 20, {28, 14}, {{28, 22}, {0, 4, 28, 14}}},
      {kWide, kSquareStatusItemLength, {14, 14}, {{22, 22}, {4, 4, 14, 14}}},
      {kWide, 28, {60, 44}, {{30, 22}, {0, 0, 30, 22}}},
      {kSquare, 28, {22, 22}, {{22, 22}, {0, 0, 22, 22}}},
      {kSquare, 28, {44, 14}, {{22, 22}, {0, 8, 22, 7}}},
      {{Slot::Shape::wide, 22, 2, false}, 33, {28, 14}, {{33, 22}, {2.5, 4, 28, 14}}},
      {kWide, 10, {0, 0}, {{10, 22}, {5, 11, 0, 0}}},
  };
  for (const auto& each : cases) {
    const ItemLayout layout = layoutOf(each.slot, each.length, each.image);
    EXPECT_EQ(layout, each.expected)
        << each.length << " " << each.image.width << "x" << each.image.height << " gave "
        << layout.picture.width << "x" << layout.picture.height << " at " << layout.bounds.x << ","
        << layout.bounds.y << " " << layout.bounds.width << "x" << layout.bounds.height;
  }
}

// A full template square of 4 points in the middle of the slot.
ItemContent smallSquare() {
  ItemContent content;
  content.image = Image{{4, 4}, true, [](Canvas& canvas, const Rect& rect) {
                          canvas.fill(rect, {}, CompositeOperation::sourceOver);
                        }};
  return content;
}

std::uint32_t pixelAt(const Bitmap& bitmap, int x, int y) {
  return bitmap.pixels.at(static_cast<std::size_t>(y * bitmap.width + x));
}

TEST(ItemPicture, TakesItsForegroundFromTheBar) {
  FontFaces fonts;
  const Bitmap onDark = renderItem(fonts, kSquare, Appearance::dark, smallSquare());
  const Bitmap onLight = renderItem(fonts, kSquare, Appearance::light, smallSquare());
  const Bitmap onUnknown = renderItem(fonts, kSquare, std::nullopt, smallSquare());
  ASSERT_EQ(onDark.width, 22);
  ASSERT_EQ(onDark.height, 22);
  EXPECT_GT(pixelAt(onDark, 11, 11), 0xFFE00000U);
  EXPECT_LT(pixelAt(onLight, 11, 11), 0xFF400000U);
  EXPECT_GE(pixelAt(onLight, 11, 11), 0xFF000000U);
  EXPECT_EQ(pixelAt(onUnknown, 11, 11), pixelAt(onDark, 11, 11));
  // Beside the square: only the unknown bar has a dark edge there.
  EXPECT_EQ(pixelAt(onDark, 8, 11), 0U);
  EXPECT_LT(pixelAt(onUnknown, 8, 11) & 0xFFU, 0x40U);
  EXPECT_GT(pixelAt(onUnknown, 8, 11) >> 24, 0x80U);
  EXPECT_EQ(pixelAt(onUnknown, 5, 11), 0U);
  // A wide picture has room for it.
  ItemContent wide = smallSquare();
  wide.image->size = {28, 14};
  wide.length = 28;
  const Bitmap backed = renderItem(fonts, kWide, std::nullopt, wide);
  EXPECT_EQ(backed.width, 30);
  EXPECT_LT(pixelAt(backed, 0, 11) & 0xFFU, 0x40U);
  EXPECT_GT(pixelAt(backed, 0, 11) >> 24, 0x80U);
}

TEST(ItemPicture, ATitleStandsInForAnImageUnlessTheHostShowsItBeside) {
  FontFaces fonts;
  ItemContent content;
  content.length = 40;
  content.title.runs.push_back({"57", {}, {}, {}});
  const auto hasInk = [](const Bitmap& bitmap) {
    return std::ranges::any_of(bitmap.pixels, [](std::uint32_t pixel) { return pixel != 0; });
  };
  const Bitmap text = renderItem(fonts, kWide, Appearance::dark, content);
  EXPECT_EQ(text.width, 40);
  EXPECT_TRUE(hasInk(text));
  const Bitmap beside =
      renderItem(fonts, {Slot::Shape::square, 16, 2, true}, Appearance::dark, content);
  EXPECT_EQ(beside.width, 32);  // an empty picture keeps the place; none would be a placeholder
  EXPECT_FALSE(hasInk(beside));
  EXPECT_EQ(renderItem(fonts, kWide, Appearance::dark, {}), Bitmap());
}

}  // namespace
}  // namespace kelvane
