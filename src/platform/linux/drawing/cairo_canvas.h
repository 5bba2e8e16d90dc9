// A `Canvas` on a cairo context. Main thread; for the length of one drawing.
#pragma once

#include <optional>

#include <cairo.h>

#include "platform/canvas.h"
#include "platform/linux/drawing/font_faces.h"
#include "platform/linux/drawing/text_layout.h"

namespace kelvane {

class CairoCanvas : public Canvas {
 public:
  // Draws on `context`, whose user space must be points with y upwards. What names no colour is
  // drawn in `foreground`. Both references and the context outlive the canvas.
  CairoCanvas(cairo_t* context, FontFaces& faces, const Color& foreground);

  // Pictures are paths here, so there is nothing to resample.
  void setImageInterpolation(ImageInterpolation) override {}
  void drawPicture(const Picture& picture, const Rect& rect, double opacity) override;
  void drawText(std::string_view text, const Rect& rect, const TextStyle& style) override;
  void fill(const Rect& rect, const Color& color, CompositeOperation operation) override;

  // A line whose baseline starts at `start`; `color` absent is the foreground.
  void drawLine(const TextLine& line, const Point& start, const std::optional<Color>& color);

 private:
  cairo_t* context_;
  FontFaces& faces_;
  Color foreground_;
};

}  // namespace kelvane
