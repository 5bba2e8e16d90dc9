// A glyph's outline in the font's own units. Main thread.
#pragma once

#include "platform/linux/drawing/font_faces.h"

namespace kelvane {

// Loads the glyph into its face's slot (`face->glyph`), unhinted and in font units; the slot holds
// it until the next load. False when the font has no outline for it.
bool loadOutline(const FaceGlyph& glyph);

}  // namespace kelvane
