// A `Canvas` that draws into AppKit's current graphics context. Main thread; for the length of one
// drawing.
#pragma once

#include "platform/canvas.h"

namespace kelvane {

class AppKitCanvas : public Canvas {
 public:
  double scale() const override;
  void setImageInterpolation(ImageInterpolation interpolation) override;
  void drawPicture(const Picture& picture, const Rect& rect, double opacity) override;
  void drawText(std::string_view text, const Rect& rect, const TextStyle& style) override;
  void fill(const Rect& rect, const Color& color, CompositeOperation operation) override;
};

}  // namespace kelvane
