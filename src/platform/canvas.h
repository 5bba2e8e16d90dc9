// Something to draw on. Handed to a drawing function for the length of one call and owned by the
// platform; main thread. Drawing never fails visibly.
#pragma once

#include <string_view>

#include "platform/color.h"
#include "platform/geometry.h"
#include "platform/picture.h"
#include "platform/text.h"

namespace kelvane {

enum class CompositeOperation {
  sourceOver,
  sourceAtop,  // paints only where something was painted before, in proportion to its alpha
};

enum class ImageInterpolation { standard, high };

class Canvas {
 public:
  virtual ~Canvas() = default;

  // Pixels per point, for drawing on whole pixels; the lower left corner of a drawing lies on one.
  virtual double scale() const = 0;

  // How pictures are resampled from here on, where the platform resamples at all.
  virtual void setImageInterpolation(ImageInterpolation interpolation) = 0;

  // Draws `picture` stretched into `rect`, over what is there, its alpha multiplied by `opacity`
  // (0.0 to 1.0).
  virtual void drawPicture(const Picture& picture, const Rect& rect, double opacity) = 0;

  // Draws one line of text centred in the width of `rect`; what does not fit is cut off at its
  // sides. The line's baseline lies on the lower edge of `rect`.
  virtual void drawText(std::string_view text, const Rect& rect, const TextStyle& style) = 0;

  virtual void fill(const Rect& rect, const Color& color, CompositeOperation operation) = 0;
};

}  // namespace kelvane
