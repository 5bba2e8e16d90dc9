// Drawing on the in-memory computer: a canvas that records what it was told, and text whose size is
// simple arithmetic. Main thread.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/canvas.h"
#include "platform/graphics.h"
#include "platform/image.h"

namespace kelvane {

struct DrawCommand {
  enum class Kind { interpolation, picture, text, fill };
  Kind kind = Kind::fill;
  std::string what;  // the picture's name or the text
  Rect rect;
  double opacity = 1;  // pictures
  TextStyle style;     // texts
  Color color;         // fills
  CompositeOperation operation = CompositeOperation::sourceOver;
  ImageInterpolation interpolation = ImageInterpolation::standard;
};

class RecordingCanvas : public Canvas {
 public:
  double scale() const override { return pixelsPerPoint; }
  void setImageInterpolation(ImageInterpolation interpolation) override;
  void drawPicture(const Picture& picture, const Rect& rect, double opacity) override;
  void drawText(std::string_view text, const Rect& rect, const TextStyle& style) override;
  void fill(const Rect& rect, const Color& color, CompositeOperation operation) override;

  double pixelsPerPoint = 1;
  std::vector<DrawCommand> commands;
};

// Draws an image into a record, in the rectangle (0, 0) and its size.
std::vector<DrawCommand> record(const Image& image, double pixelsPerPoint = 1);

// Every character is 0.6 of the font size wide plus the kern, its ink 0.7 of the size high; a line
// is 1.2 of the size high.
class MemoryGraphics : public Graphics {
 public:
  Rect inkBounds(std::string_view text, const TextStyle& style) override;
  Size lineBounds(const AttributedText& text) override;
  double smallSystemFontSize() override { return 11; }

  static constexpr double kDefaultFontSize = 13;
};

}  // namespace kelvane
