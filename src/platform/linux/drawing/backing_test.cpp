#include "platform/linux/drawing/backing.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kelvane {
namespace {

constexpr Color kBlack{0, 0, 0, 1};

// '#' is white ink, '+' faint white ink.
Bitmap drawn(const std::vector<std::string>& rows) {
  Bitmap bitmap{static_cast<int>(rows[0].size()), static_cast<int>(rows.size()), {}};
  for (const std::string& row : rows)
    for (const char c : row)
      bitmap.pixels.push_back(c == '#' ? 0xFFFFFFFFU : c == '+' ? 0x80808080U : 0U);
  return bitmap;
}

// Of each pixel: '#' white, 'b' black, '+' grey, '.' empty, '?' something else.
std::vector<std::string> look(const Bitmap& bitmap) {
  std::vector<std::string> rows;
  for (int y = 0; y < bitmap.height; ++y) {
    rows.emplace_back();
    for (int x = 0; x < bitmap.width; ++x) {
      const std::uint32_t pixel = bitmap.pixels[static_cast<std::size_t>(y * bitmap.width + x)];
      rows.back() += pixel == 0xFFFFFFFFU   ? '#'
                     : pixel == 0xFF000000U ? 'b'
                     : pixel == 0xFF808080U ? '+'
                     : pixel == 0           ? '.'
                                            : '?';
    }
  }
  return rows;
}

TEST(Backing, FillsAFrameAndNothingOutsideIt) {
  const Bitmap frame = drawn({".........",  //
                              "..+++++..",  //
                              "..+...+..",  //
                              "..+.#.+..",  //
                              "..+...+..",  //
                              "..+++++..",  //
                              "........."});
  EXPECT_EQ(look(withBacking(frame, kBlack, 3, 0)),
            (std::vector<std::string>{".........",  //
                                      "..+++++..",  //
                                      "..+bbb+..",  //
                                      "..+b#b+..",  //
                                      "..+bbb+..",  //
                                      "..+++++..",  //
                                      "........."}));
}

TEST(Backing, LeavesWiderOpeningsOpen) {
  const Bitmap apart = drawn({"#......#"});
  EXPECT_EQ(look(withBacking(apart, kBlack, 2, 0)), look(apart));
  EXPECT_EQ(look(withBacking(apart, kBlack, 6, 0)), (std::vector<std::string>{"#bbbbbb#"}));
}

TEST(Backing, ReachesItsMarginAndFadesOut) {
  Bitmap dot{5, 5, std::vector<std::uint32_t>(25)};
  dot.pixels[12] = 0xFFFFFFFF;
  const Bitmap backed = withBacking(dot, {0, 0, 0, 0.8}, 0, 1);
  const auto at = [&](std::size_t x, std::size_t y) { return backed.pixels[y * 5 + x]; };
  EXPECT_EQ(at(2, 2), 0xFFFFFFFFU);
  EXPECT_EQ(at(1, 2), 0xCC000000U);
  EXPECT_NEAR(at(1, 1) >> 24, 119.5, 1);  // 0.8 x (2 - sqrt 2)
  EXPECT_EQ(at(0, 2), 0U);
  EXPECT_EQ(withBacking({}, kBlack, 4, 1), Bitmap());
}

TEST(Backing, APlateIsARectangleAroundAllThatIsDrawn) {
  const Bitmap ragged = drawn({".......",  //
                               ".......",  //
                               "..#....",  //
                               "..#.#..",  //
                               ".......",  //
                               ".......",  //
                               "......."});
  EXPECT_EQ(look(withPlate(ragged, kBlack, 1, 0)),
            (std::vector<std::string>{".......",  //
                                      ".bbbbb.",  //
                                      ".b#bbb.",  //
                                      ".b#b#b.",  //
                                      ".bbbbb.",  //
                                      ".......",  //
                                      "......."}));
  const Bitmap rounded = withPlate(ragged, kBlack, 1, 2);
  EXPECT_LT(rounded.pixels[1 * 7 + 1] >> 24, 0x80U);
  EXPECT_EQ(rounded.pixels[1 * 7 + 3], 0xFF000000U);
  EXPECT_EQ(look(withPlate(drawn({"..."}), kBlack, 1, 0)), (std::vector<std::string>{"..."}));
}

}  // namespace
}  // namespace kelvane
