// A backing for content whose ground is not known: its own silhouette, filled and a little wider,
// so that a light glyph stays legible on a light bar. Pure.
#pragma once

#include "platform/color.h"
#include "platform/linux/drawing/bitmap.h"

namespace kelvane {

// The bitmap over its silhouette in `color`. Openings up to `gap` pixels wide (at most 32), such as
// the inside of a frame or the space between two digits, are filled; the silhouette then reaches
// `margin` pixels (at most 8) further, fading out over one more. The size stays: what lies at the
// edge has no margin beyond it.
Bitmap withBacking(const Bitmap& bitmap, const Color& color, double gap, double margin);

}  // namespace kelvane
