#include "platform/linux/drawing/bitmap_canvas.h"

#include <algorithm>
#include <cmath>

#include "platform/linux/drawing/pixels.h"

namespace kelvane {
namespace {

bool isDrawable(const Rect& rect) {
  return std::isfinite(rect.x) && std::isfinite(rect.y) && rect.width > 0 && rect.height > 0 &&
         std::isfinite(rect.width) && std::isfinite(rect.height);
}

std::vector<PathStep> pathOf(const Rect& rect) {
  using Kind = PathStep::Kind;
  const double right = rect.x + rect.width;
  const double top = rect.y + rect.height;
  return {{Kind::move, {{{rect.x, rect.y}}}},
          {Kind::line, {{{right, rect.y}}}},
          {Kind::line, {{{right, top}}}},
          {Kind::line, {{{rect.x, top}}}},
          {Kind::close, {}}};
}

}  // namespace

BitmapCanvas::BitmapCanvas(Bitmap& bitmap, double scale, FontFaces& faces, const Color& foreground)
    : bitmap_(bitmap),
      scale_(scale),
      faces_(faces),
      foreground_(foreground),
      right_(bitmap.width) {}

Placement BitmapCanvas::placement(const Point& origin) const {
  return {{origin.x * scale_, origin.y * scale_}, {scale_, scale_}};
}

void BitmapCanvas::drawPicture(const Picture& picture, const Rect& rect, double opacity) {
  if (!isDrawable(rect) || !(picture.size.width > 0) || !(picture.size.height > 0)) return;
  if (!(opacity < 1) || picture.layers.size() < 2) return drawLayers(picture, rect, opacity);
  // Overlapping layers must not show through each other, so they fade together.
  Bitmap whole{bitmap_.width, bitmap_.height, std::vector<std::uint32_t>(bitmap_.pixels.size())};
  BitmapCanvas(whole, scale_, faces_, foreground_).drawLayers(picture, rect, 1);
  const std::uint32_t part = premultiplied({}, opacity) >> 24;
  std::ranges::transform(whole.pixels, bitmap_.pixels, bitmap_.pixels.begin(),
                         [&](auto top, auto bottom) { return over(faded(top, part), bottom); });
}

void BitmapCanvas::drawLayers(const Picture& picture, const Rect& rect, double opacity) {
  Placement place = placement({rect.x, rect.y});
  place.unit.width *= rect.width / picture.size.width;
  place.unit.height *= rect.height / picture.size.height;
  for (const PictureLayer& layer : picture.layers) {
    Shape shape;
    shape.add(layer.path, place);
    fill(shape, FillRule::evenOdd, layer.color.value_or(foreground_), layer.opacity * opacity);
  }
}

void BitmapCanvas::drawText(std::string_view text, const Rect& rect, const TextStyle& style) {
  if (!std::isfinite(rect.x) || !std::isfinite(rect.y) || !(rect.width > 0)) return;
  const TextLine line = layOutLine(faces_, text, style);
  // A column that a side runs through is drawn whole.
  const double width = bitmap_.width;
  left_ = static_cast<int>(std::clamp(std::floor(rect.x * scale_), 0.0, width));
  right_ = static_cast<int>(std::clamp(std::ceil((rect.x + rect.width) * scale_), 0.0, width));
  drawLine(line, {rect.x + (rect.width - line.advance) / 2, rect.y}, style.color);
  left_ = 0;
  right_ = bitmap_.width;
}

void BitmapCanvas::drawLine(const TextLine& line, const Point& start,
                            const std::optional<Color>& color) {
  Shape shape;
  for (const PlacedGlyph& placed : line.glyphs) {
    Placement place = placement({start.x + placed.x, start.y});
    place.unit.width *= placed.size / placed.glyph.face->units_per_EM;
    place.unit.height = place.unit.width;
    shape.add(*placed.glyph.outline, place);
  }
  fill(shape, FillRule::winding, color.value_or(foreground_), 1);
}

void BitmapCanvas::fill(const Rect& rect, const Color& color, CompositeOperation operation) {
  if (!isDrawable(rect)) return;
  Shape shape;
  shape.add(pathOf(rect), placement({}));
  fill(shape, FillRule::winding, color, 1, operation);
}

void BitmapCanvas::fill(Shape& shape, FillRule rule, const Color& color, double opacity,
                        CompositeOperation operation) {
  const std::uint32_t whole = premultiplied(color, color.alpha * opacity);
  const auto compose = operation == CompositeOperation::sourceAtop ? atop : over;
  const auto paint = [&](const Shape::Span& span) {
    const std::uint32_t source = faded(whole, span.coverage);
    std::uint32_t* row = &bitmap_.pixels[static_cast<std::size_t>(bitmap_.height - 1 - span.row) *
                                         static_cast<std::size_t>(bitmap_.width)];
    if (compose == over && source >> 24 == 255)
      std::fill_n(row + span.start, span.length, source);
    else
      for (int x = span.start; x < span.start + span.length; ++x) row[x] = compose(source, row[x]);
  };
  shape.rasterise(faces_.library(), rule, {left_, right_, bitmap_.height}, paint);
}

}  // namespace kelvane
