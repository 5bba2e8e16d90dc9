#include "platform/memory/memory_graphics.h"

#include <algorithm>

namespace kelvane {
namespace {

double characterCount(std::string_view utf8) {
  return static_cast<double>(std::ranges::count_if(
      utf8, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) != 0x80U; }));
}

}  // namespace

void RecordingCanvas::setImageInterpolation(ImageInterpolation interpolation) {
  commands.push_back({.kind = DrawCommand::Kind::interpolation, .interpolation = interpolation});
}

void RecordingCanvas::drawPicture(const Picture& picture, const Rect& rect, double opacity) {
  commands.push_back(
      {.kind = DrawCommand::Kind::picture, .what = picture.name, .rect = rect, .opacity = opacity});
}

void RecordingCanvas::drawText(std::string_view text, const Rect& rect, const TextStyle& style) {
  commands.push_back(
      {.kind = DrawCommand::Kind::text, .what = std::string(text), .rect = rect, .style = style});
}

void RecordingCanvas::fill(const Rect& rect, const Color& color, CompositeOperation operation) {
  commands.push_back(
      {.kind = DrawCommand::Kind::fill, .rect = rect, .color = color, .operation = operation});
}

std::vector<DrawCommand> record(const Image& image, double pixelsPerPoint) {
  RecordingCanvas canvas;
  canvas.pixelsPerPoint = pixelsPerPoint;
  image.draw(canvas, {0, 0, image.size.width, image.size.height});
  return canvas.commands;
}

Rect MemoryGraphics::inkBounds(std::string_view text, const TextStyle& style) {
  if (style.size <= 0) return {};
  return {0, 0, characterCount(text) * (0.6 * style.size + style.kern), 0.7 * style.size};
}

Size MemoryGraphics::lineBounds(const AttributedText& text) {
  Size size;
  for (const TextRun& run : text.runs) {
    const double fontSize = run.fontSize.value_or(kDefaultFontSize);
    size.width += characterCount(run.text) * 0.6 * fontSize;
    size.height = std::max(size.height, 1.2 * fontSize);
  }
  return size;
}

}  // namespace kelvane
