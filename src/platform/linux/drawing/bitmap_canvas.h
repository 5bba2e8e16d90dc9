// A `Canvas` that draws into a bitmap. Main thread; for the length of one drawing.
#pragma once

#include <optional>

#include "platform/canvas.h"
#include "platform/linux/drawing/bitmap.h"
#include "platform/linux/drawing/font_faces.h"
#include "platform/linux/drawing/shape.h"
#include "platform/linux/drawing/text_layout.h"

namespace kelvane {

class BitmapCanvas : public Canvas {
 public:
  // The origin of the canvas is the lower left corner of the bitmap, `scale` pixels are a point.
  // What names no colour is drawn in `foreground`. Both references outlive the canvas.
  BitmapCanvas(Bitmap& bitmap, double scale, FontFaces& faces, const Color& foreground);

  double scale() const override { return scale_; }
  // Pictures are paths here, so there is nothing to resample.
  void setImageInterpolation(ImageInterpolation) override {}
  void drawPicture(const Picture& picture, const Rect& rect, double opacity) override;
  void drawText(std::string_view text, const Rect& rect, const TextStyle& style) override;
  void fill(const Rect& rect, const Color& color, CompositeOperation operation) override;

  // A line whose baseline starts at `start`; `color` absent is the foreground.
  void drawLine(const TextLine& line, const Point& start, const std::optional<Color>& color);

 private:
  Placement placement(const Point& origin) const;
  void drawLayers(const Picture& picture, const Rect& rect, double opacity);
  void fill(Shape& shape, FillRule rule, const Color& color, double opacity,
            CompositeOperation operation = CompositeOperation::sourceOver);

  Bitmap& bitmap_;
  double scale_;
  FontFaces& faces_;
  Color foreground_;
  int left_ = 0;  // what lies outside these columns is not drawn
  int right_;
};

}  // namespace kelvane
