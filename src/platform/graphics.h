// Measuring text the way the platform will draw it. Main thread.
#pragma once

#include <string_view>

#include "platform/geometry.h"
#include "platform/text.h"

namespace kelvane {

class Graphics {
 public:
  virtual ~Graphics() = default;

  // The box of the ink itself, relative to the start of the baseline (y upwards). Advances are not
  // rounded and hinting is off, so a smaller size always gives a narrower box. A size at or below 0
  // and a text without ink give an empty box.
  virtual Rect inkBounds(std::string_view text, const TextStyle& style) = 0;

  // The box of the line: the sum of the advances wide, ascent and descent high. Not rounded. Runs
  // without a font size are measured in the platform's default font, as they are shown.
  virtual Size lineBounds(const AttributedText& text) = 0;

  // The platform's size for small labels, in points.
  virtual double smallSystemFontSize() = 0;
};

}  // namespace kelvane
