#include "platform/linux/drawing/bitmap.h"

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <functional>
#include <memory>
#include <utility>

#include <cairo.h>

#include "platform/linux/drawing/cairo_canvas.h"
#include "platform/linux/drawing/cairo_graphics.h"
#include "platform/linux/drawing/text_layout.h"

namespace kelvane {
namespace {

struct SurfaceDeleter {
  void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
};
struct ContextDeleter {
  void operator()(cairo_t* context) const { cairo_destroy(context); }
};
using SurfacePtr = std::unique_ptr<cairo_surface_t, SurfaceDeleter>;
using ContextPtr = std::unique_ptr<cairo_t, ContextDeleter>;

constexpr Color kBlack{0, 0, 0, 1};

// The surface draws into the bitmap's own pixels and must not outlive them.
SurfacePtr surfaceOn(Bitmap& bitmap) {
  return SurfacePtr(cairo_image_surface_create_for_data(
      reinterpret_cast<unsigned char*>(bitmap.pixels.data()), CAIRO_FORMAT_ARGB32, bitmap.width,
      bitmap.height, bitmap.width * 4));
}

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

Bitmap draw(const Size& size, double scale, const std::function<void(cairo_t* context)>& drawing) {
  Bitmap bitmap = emptyBitmap(size, scale);
  if (bitmap.pixels.empty()) return bitmap;
  const SurfacePtr surface = surfaceOn(bitmap);
  const ContextPtr context(cairo_create(surface.get()));
  cairo_translate(context.get(), 0, bitmap.height);
  cairo_scale(context.get(), scale, -scale);
  drawing(context.get());
  cairo_surface_flush(surface.get());
  return bitmap;
}

}  // namespace

Bitmap renderImage(FontFaces& faces, const Image& image, double scale,
                   const std::optional<Color>& foreground) {
  return draw(image.size, scale, [&](cairo_t* context) {
    CairoCanvas canvas(context, faces, image.isTemplate ? kBlack : foreground.value_or(kBlack));
    const Rect whole{0, 0, image.size.width, image.size.height};
    if (image.draw) image.draw(canvas, whole);
    if (!image.isTemplate || !foreground) return;
    cairo_set_operator(context, CAIRO_OPERATOR_IN);
    cairo_set_source_rgba(context, foreground->red, foreground->green, foreground->blue,
                          foreground->alpha);
    cairo_paint(context);
  });
}

Bitmap renderText(FontFaces& faces, const AttributedText& text, double length, double height,
                  double scale, const std::optional<Color>& foreground) {
  return draw({length, height}, scale, [&](cairo_t* context) {
    CairoCanvas canvas(context, faces, foreground.value_or(kBlack));
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
  });
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
  std::vector<std::uint8_t> bytes;
  bytes.reserve(bitmap.pixels.size() * 4);
  for (const std::uint32_t pixel : bitmap.pixels) {
    const std::uint32_t alpha = pixel >> 24;
    bytes.push_back(static_cast<std::uint8_t>(alpha));
    for (const int shift : {16, 8, 0}) {
      const std::uint32_t value = pixel >> shift & 0xFF;
      const std::uint32_t straight = alpha == 0 ? 0 : (value * 255 + alpha / 2) / alpha;
      bytes.push_back(static_cast<std::uint8_t>(std::min<std::uint32_t>(255, straight)));
    }
  }
  return bytes;
}

std::optional<std::string> writePng(const Bitmap& bitmap, const std::string& path) {
  if (bitmap.pixels.empty()) return "cannot write " + path + ": the picture has no size";
  Bitmap copy = bitmap;  // cairo wants pixels it may write to
  const SurfacePtr surface = surfaceOn(copy);
  errno = 0;
  const cairo_status_t status = cairo_surface_write_to_png(surface.get(), path.c_str());
  if (status == CAIRO_STATUS_SUCCESS) return std::nullopt;
  const bool isFileError = status == CAIRO_STATUS_WRITE_ERROR && errno != 0;
  return "cannot write " + path + ": " +
         (isFileError ? std::strerror(errno) : cairo_status_to_string(status));
}

}  // namespace kelvane
