// One line of text as glyphs placed one after the other, without shaping: the item's texts are
// digits and signs. Main thread, as `FontFaces`.
//
// Glyphs are measured in the font's own units and scaled, never hinted or rounded, so every measure
// is exactly proportional to the size.
#pragma once

#include <string_view>
#include <vector>

#include "platform/geometry.h"
#include "platform/linux/drawing/font_faces.h"
#include "platform/text.h"

namespace kelvane {

// A glyph whose origin lies on the baseline at `x`, drawn at `size` points.
struct PlacedGlyph {
  FaceGlyph glyph;
  double size = 0;
  double x = 0;
};

struct TextLine {
  std::vector<PlacedGlyph> glyphs;
  double advance = 0;  // points, with the kern after every character, the last one too
};

// The line starts at x = 0. A size at or below 0, or not a number, gives an empty line.
TextLine layOutLine(FontFaces& faces, std::string_view text, const TextStyle& style);

// The box of the line's ink, relative to the start of the baseline, y upwards; empty without ink.
Rect inkBounds(const TextLine& line);

// Measures of the text face at `size` points; all 0 without a font or at a size at or below 0.
struct FontMetrics {
  double ascent = 0;
  double descent = 0;  // below the baseline, positive
  double capHeight = 0;
};
FontMetrics fontMetrics(FontFaces& faces, double size, FontWeight weight);

}  // namespace kelvane
