// The drawn battery of the item. Main thread.
#pragma once

#include "menubar/item_context.h"
#include "platform/color.h"
#include "platform/image.h"

namespace kelvane {

// The battery with the percentage, the time or the plug inside. The battery and the settings are
// read when the image is drawn, not when it is made; what the context refers to must live as long
// as the image. Not yet marked as a template.
Image makeGlyphImage(const ItemContext& context);

// A copy of `image` in one colour: what is painted keeps its alpha, what is empty stays empty.
Image warningTinted(const Image& image, const Color& color);

// The length of the item with the glyph, in points. Deliberately a little more than the image's
// width when the large icon is chosen.
double iconItemLength(const ItemContext& context);

}  // namespace kelvane
