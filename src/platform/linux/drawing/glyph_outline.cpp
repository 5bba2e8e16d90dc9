#include "platform/linux/drawing/glyph_outline.h"

#include <freetype/freetype.h>
#include <ft2build.h>

namespace kelvane {

bool loadOutline(const FaceGlyph& glyph) {
  return FT_Load_Glyph(glyph.face, glyph.index, FT_LOAD_NO_SCALE | FT_LOAD_NO_HINTING) == 0 &&
         glyph.face->glyph->format == FT_GLYPH_FORMAT_OUTLINE;
}

}  // namespace kelvane
