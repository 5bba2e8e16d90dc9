#include "platform/linux/drawing/bitmap.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

#include <arpa/inet.h>

#include "platform/linux/drawing/bitmap_canvas.h"
#include "platform/linux/drawing/linux_graphics.h"
#include "platform/linux/drawing/pixels.h"
#include "platform/linux/drawing/text_layout.h"

namespace kelvane {
namespace {

constexpr Color kBlack{0, 0, 0, 1};

Bitmap emptyBitmap(const Size& size, double scale) {
  // The slack keeps 100 points at 1.1 from growing a pixel by the last bit of a product.
  const double width = std::ceil(size.width * scale - 1e-6);
  const double height = std::ceil(size.height * scale - 1e-6);
  Bitmap bitmap;
  if (width >= 1 && height >= 1 && width <= kMaxBitmapSide && height <= kMaxBitmapSide) {
    bitmap.width = static_cast<int>(width);
    bitmap.height = static_cast<int>(height);
    bitmap.pixels.resize(static_cast<std::size_t>(bitmap.width) *
                         static_cast<std::size_t>(bitmap.height));
  }
  return bitmap;
}

}  // namespace

Bitmap renderImage(FontFaces& faces, const Image& image, double scale,
                   const std::optional<Color>& foreground) {
  Bitmap bitmap = emptyBitmap(image.size, scale);
  if (bitmap.pixels.empty()) return bitmap;
  BitmapCanvas canvas(bitmap, scale, faces,
                      image.isTemplate ? kBlack : foreground.value_or(kBlack));
  if (image.draw) image.draw(canvas, {0, 0, image.size.width, image.size.height});
  if (!image.isTemplate || !foreground) return bitmap;
  const std::uint32_t color = premultiplied(*foreground, foreground->alpha);
  std::uint32_t alpha = 0, colored = 0;  // of the pixel before, which the next one mostly is like
  for (std::uint32_t& pixel : bitmap.pixels) {
    if (pixel >> 24 != alpha) {
      alpha = pixel >> 24;
      colored = faded(color, alpha);
    }
    pixel = colored;
  }
  return bitmap;
}

Bitmap renderText(FontFaces& faces, const AttributedText& text, double length, double height,
                  double scale, const std::optional<Color>& foreground) {
  Bitmap bitmap = emptyBitmap({length, height}, scale);
  if (bitmap.pixels.empty()) return bitmap;
  BitmapCanvas canvas(bitmap, scale, faces, foreground.value_or(kBlack));
  std::vector<TextLine> lines;
  double width = 0, capHeight = 0;
  for (const TextRun& run : text.runs) {
    const TextStyle style = runStyle(run);
    lines.push_back(layOutLine(faces, run.text, style));
    width += lines.back().advance;
    capHeight = std::max(capHeight, fontMetrics(faces, style.size, style.weight).capHeight);
  }
  Point pen{(length - width) / 2, (height - capHeight) / 2};
  for (std::size_t i = 0; i < lines.size(); ++i) {
    canvas.drawLine(lines[i], pen, text.runs[i].color);
    pen.x += lines[i].advance;
  }
  return bitmap;
}

void moveUp(Bitmap& bitmap, int rows) {
  const Bitmap before = std::exchange(
      bitmap, {bitmap.width, bitmap.height, std::vector<std::uint32_t>(bitmap.pixels.size())});
  const auto width = static_cast<std::ptrdiff_t>(bitmap.width);
  for (int y = 0; y < bitmap.height; ++y) {
    const int from = y + rows;
    if (from < 0 || from >= bitmap.height) continue;
    std::copy_n(before.pixels.begin() + from * width, width, bitmap.pixels.begin() + y * width);
  }
}

std::vector<std::uint8_t> straightBigEndianArgb(const Bitmap& bitmap) {
  std::vector<std::uint8_t> bytes(bitmap.pixels.size() * 4);
  std::uint8_t* next = bytes.data();
  std::uint32_t before = 0, bigEndian = 0;  // of the pixel before
  for (const std::uint32_t pixel : bitmap.pixels) {
    if (pixel != before) {
      before = pixel;
      bigEndian = htonl(straight(pixel));
    }
    std::memcpy(next, &bigEndian, sizeof bigEndian);
    next += sizeof bigEndian;
  }
  return bytes;
}

}  // namespace kelvane
