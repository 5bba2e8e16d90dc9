// Finished pixels, and what is done with them. Plain values; the conversions are pure, rendering is
// for the main thread.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "platform/color.h"
#include "platform/image.h"
#include "platform/linux/drawing/font_faces.h"
#include "platform/text.h"

namespace kelvane {

// Rows from the top down without padding. A pixel is 0xAARRGGBB in the machine's byte order, its
// colours multiplied by its alpha.
struct Bitmap {
  int width = 0;
  int height = 0;
  std::vector<std::uint32_t> pixels;
  bool operator==(const Bitmap&) const = default;
};

// Longest side of a bitmap in pixels; what would be larger, or has no size, comes out 0 by 0.
inline constexpr int kMaxBitmapSide = 8192;

// The image at `scale` pixels per point, its lower left corner in that of the bitmap; sizes are
// rounded up to whole pixels. A template image is painted in `foreground`, keeping its own alpha;
// parts of any image that name no colour take it too, or black when it is absent.
Bitmap renderImage(FontFaces& faces, const Image& image, double scale,
                   const std::optional<Color>& foreground);

// One line of text in the middle of a slot of `length` by `height` points: centred in its length
// and cut off at its sides, its capitals centred in its height. Runs that name no colour take
// `foreground`, or black when it is absent.
Bitmap renderText(FontFaces& faces, const AttributedText& text, double length, double height,
                  double scale, const std::optional<Color>& foreground);

// Moves what is drawn up, or down when negative; what leaves the bitmap is lost.
void moveUp(Bitmap& bitmap, int rows);

// The pixels as a StatusNotifierItem's IconPixmap carries them: four bytes each, alpha, red, green,
// blue, not multiplied by the alpha.
std::vector<std::uint8_t> straightBigEndianArgb(const Bitmap& bitmap);

}  // namespace kelvane
