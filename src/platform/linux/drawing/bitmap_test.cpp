#include "platform/linux/drawing/bitmap.h"

#include <cstdio>
#include <filesystem>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/drawing/pinned_fonts.h"
#include "platform/linux/drawing/png_file.h"
#include "platform/linux/drawing/png_reader_test.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

TEST(Bitmap, pixelSizesAreRoundedUp) {
  const PinnedFonts fonts({});
  FontFaces faces;
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  const struct {
    Size size;
    double scale;
    int width;
    int height;
  } rows[] = {
      {{28, 14}, 2, 56, 28},      {{28, 14}, 1.25, 35, 18},  {{30.8, 15.4}, 1, 31, 16},
      {{22, 10}, 1.1, 25, 11},    {{100, 30}, 1.1, 110, 33}, {{0, 14}, 2, 0, 0},
      {{28, 14}, 0, 0, 0},        {{28, 14}, -1, 0, 0},      {{28, nan}, 1, 0, 0},
      {{28, 14}, infinity, 0, 0}, {{28, 14}, 300, 0, 0},
  };
  for (const auto& row : rows) {
    const Bitmap bitmap = renderImage(faces, {row.size, true, {}}, row.scale, {});
    EXPECT_EQ(bitmap.width, row.width) << row.scale;
    EXPECT_EQ(bitmap.height, row.height) << row.scale;
    EXPECT_EQ(bitmap.pixels.size(), static_cast<std::size_t>(row.width * row.height));
  }
}

TEST(Bitmap, runsFollowEachOtherInTheirColours) {
  const PinnedFonts fonts({"DejaVu Sans"});
  FontFaces faces;
  const AttributedText text{
      {{"|", 30.0, FontWeight::regular, Color{1, 0, 0, 1}}, {"|", 30.0, FontWeight::regular, {}}}};
  const Bitmap bitmap = renderText(faces, text, 40, 22, 4, Color{0, 0, 1, 1});
  std::vector<std::uint32_t> solid;  // the colours met from left to right in the middle row
  for (int x = 0; x < bitmap.width; ++x) {
    const std::uint32_t pixel =
        bitmap.pixels[static_cast<std::size_t>(bitmap.height / 2 * bitmap.width + x)];
    if (pixel >> 24 == 0xFF && (solid.empty() || solid.back() != pixel)) solid.push_back(pixel);
  }
  EXPECT_THAT(solid, ElementsAre(0xFFFF0000U, 0xFF0000FFU));
}

TEST(Bitmap, straightBytesAreAlphaFirst) {
  const struct {
    std::uint32_t pixel;
    std::vector<std::uint8_t> bytes;
  } rows[] = {
      {0xFF123456, {0xFF, 0x12, 0x34, 0x56}}, {0x80800000, {0x80, 0xFF, 0x00, 0x00}},
      {0x80400020, {0x80, 0x80, 0x00, 0x40}}, {0x00000000, {0x00, 0x00, 0x00, 0x00}},
      {0x01010100, {0x01, 0xFF, 0xFF, 0x00}}, {0x03020100, {0x03, 0xAA, 0x55, 0x00}},
      {0x10FFFFFF, {0x10, 0xFF, 0xFF, 0xFF}},  // more colour than its alpha allows
  };
  for (const auto& row : rows) EXPECT_EQ(straightBigEndianArgb({1, 1, {row.pixel}}), row.bytes);
}

class PngFile : public ::testing::Test {
 protected:
  PngFile() {
    folder_ = (std::filesystem::temp_directory_path() / "kelvane-png-XXXXXX").string();
    if (!mkdtemp(folder_.data())) ADD_FAILURE() << "no temporary folder";
  }
  ~PngFile() override { std::filesystem::remove_all(folder_); }
  std::string folder_;
};

TEST_F(PngFile, holdsThePixels) {
  const Bitmap bitmap{2, 1, {0xFF123456, 0x80800000}};
  const std::string path = folder_ + "/a.png";
  EXPECT_EQ(writePng(bitmap, path), std::nullopt);
  EXPECT_EQ(readPng(path), bitmap);
}

TEST_F(PngFile, failuresNameTheFileAndTheReason) {
  const Bitmap bitmap{1, 1, {0xFF000000}};
  const std::string missing = folder_ + "/none/a.png";
  const struct {
    Bitmap bitmap;
    std::string path;
    const char* reason;
  } rows[] = {
      {bitmap, missing, "No such file or directory"},
      {bitmap, folder_, "Is a directory"},
      {bitmap, "/dev/full", "No space left on device"},
      {Bitmap(), folder_ + "/a.png", "no size"},
  };
  for (const auto& row : rows) {
    const auto error = writePng(row.bitmap, row.path);
    ASSERT_TRUE(error) << row.path;
    EXPECT_THAT(*error, HasSubstr(row.path));
    EXPECT_THAT(*error, HasSubstr(row.reason));
  }
}

TEST(Bitmap, movesUpAndDownAndLosesWhatLeaves) {
  const struct {
    int rows;
    std::vector<std::uint32_t> pixels;
  } cases[] = {{0, {1, 2, 3, 4, 5, 6}},
               {1, {3, 4, 5, 6, 0, 0}},
               {-1, {0, 0, 1, 2, 3, 4}},
               {3, {0, 0, 0, 0, 0, 0}},
               {-9, {0, 0, 0, 0, 0, 0}}};
  for (const auto& each : cases) {
    Bitmap bitmap{2, 3, {1, 2, 3, 4, 5, 6}};
    moveUp(bitmap, each.rows);
    EXPECT_EQ(bitmap.pixels, each.pixels) << each.rows;
  }
  Bitmap none;
  moveUp(none, 2);
  EXPECT_EQ(none, Bitmap{});
}

}  // namespace
}  // namespace kelvane
