// Backings for content whose ground is not known, so that a light glyph stays legible on a light
// bar. Pure.
#pragma once

#include "platform/color.h"
#include "platform/linux/drawing/bitmap.h"

namespace kelvane {

// The bitmap over its silhouette in `color`. Openings up to `gap` pixels wide (at most 32), such as
// the inside of a frame or the space between two digits, are filled; the silhouette then reaches
// `margin` pixels (at most 8) further, fading out over one more. The size stays: what lies at the
// edge has no margin beyond it.
Bitmap withBacking(const Bitmap& bitmap, const Color& color, double gap, double margin);

// The bitmap over a rectangle around all that is drawn, `margin` pixels wider on each side, with
// corners of this radius: for content in rows, whose silhouette is ragged. The size stays, as
// above; an empty bitmap gets none.
Bitmap withPlate(const Bitmap& bitmap, const Color& color, double margin, double radius);

}  // namespace kelvane
