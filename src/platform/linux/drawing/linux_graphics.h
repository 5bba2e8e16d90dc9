// `Graphics` measured with the faces that the canvas draws with. Main thread.
#pragma once

#include "platform/graphics.h"
#include "platform/linux/drawing/font_faces.h"

namespace kelvane {

// The size of a run that names none, and of small labels, in points.
inline constexpr double kDefaultFontSize = 13;
inline constexpr double kSmallSystemFontSize = 11;

class LinuxGraphics : public Graphics {
 public:
  // `faces` outlives this object.
  explicit LinuxGraphics(FontFaces& faces) : faces_(faces) {}

  Rect inkBounds(std::string_view text, const TextStyle& style) override;
  Size lineBounds(const AttributedText& text) override;
  double smallSystemFontSize() override { return kSmallSystemFontSize; }

 private:
  FontFaces& faces_;
};

// The looks of a run of an attributed text, its default size filled in.
TextStyle runStyle(const TextRun& run);

}  // namespace kelvane
