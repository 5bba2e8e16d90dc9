#include "platform/linux/drawing/text_layout.h"

#include <algorithm>
#include <cmath>

#include <freetype/freetype.h>
#include <freetype/tttables.h>
#include <ft2build.h>

#include "platform/linux/drawing/utf8.h"

namespace kelvane {

TextLine layOutLine(FontFaces& faces, std::string_view text, const TextStyle& style) {
  TextLine line;
  if (!(style.size > 0) || !std::isfinite(style.size)) return line;
  line.glyphs.reserve(text.size());
  for (const char32_t character : decodeUtf8(text)) {
    const std::vector<FaceGlyph>& glyphs = faces.glyphs(character, style.weight);
    for (const FaceGlyph& glyph : glyphs) {
      if (!glyph.outline) continue;
      const double size = style.size * glyph.scale;
      line.glyphs.push_back({glyph, size, line.advance});
      line.advance += glyph.advance * size / glyph.face->units_per_EM + glyph.bearing * style.size;
    }
    if (!glyphs.empty()) line.advance += style.kern;
  }
  return line;
}

Rect inkBounds(const TextLine& line) {
  bool hasInk = false;
  double left = 0, bottom = 0, right = 0, top = 0;
  for (const PlacedGlyph& placed : line.glyphs) {
    const Rect& ink = placed.glyph.ink;
    if (ink == Rect{}) continue;
    const double unit = placed.size / placed.glyph.face->units_per_EM;
    const double x0 = placed.x + ink.x * unit;
    const double x1 = placed.x + (ink.x + ink.width) * unit;
    const double y0 = ink.y * unit;
    const double y1 = (ink.y + ink.height) * unit;
    left = hasInk ? std::min(left, x0) : x0;
    right = hasInk ? std::max(right, x1) : x1;
    bottom = hasInk ? std::min(bottom, y0) : y0;
    top = hasInk ? std::max(top, y1) : y1;
    hasInk = true;
  }
  return {left, bottom, right - left, top - bottom};
}

FontMetrics fontMetrics(FontFaces& faces, double size, FontWeight weight) {
  if (!(size > 0) || !std::isfinite(size)) return {};
  FT_Face face = faces.textFace(weight);
  if (!face) return {};
  const double unit = size / face->units_per_EM;
  FontMetrics metrics{face->ascender * unit, -face->descender * unit, 0};
  const auto* table = static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face, FT_SFNT_OS2));
  if (table && table->version >= 2 && table->version != 0xFFFF && table->sCapHeight > 0) {
    metrics.capHeight = table->sCapHeight * unit;
  } else {
    TextStyle style;
    style.size = size;
    style.weight = weight;
    const Rect capital = inkBounds(layOutLine(faces, "H", style));
    metrics.capHeight = capital.y + capital.height;
  }
  return metrics;
}

}  // namespace kelvane
