// The one picture that stands for the item in a host's slot, at exactly the slot's size, so that no
// host has to resample it. Main thread.
#pragma once

#include <optional>

#include "platform/color.h"
#include "platform/image.h"
#include "platform/linux/drawing/bitmap.h"
#include "platform/status_bar.h"
#include "platform/text.h"

namespace kelvane {

struct ItemContent {
  double length = kSquareStatusItemLength;
  AttributedText title;
  std::optional<Image> image;
};

// Where an image lies in the picture, both in points. `bounds` starts at a whole pixel.
struct ItemLayout {
  Size picture;
  Rect bounds;
  bool operator==(const ItemLayout&) const = default;
};

// A wide slot's picture is as long as the item, or as its image when that is longer; a square one
// takes the image whole. An image is shrunk to fit, never enlarged, and lies in the middle.
ItemLayout layoutOf(const Slot& slot, double length, const Size& image);

// What of a slot is left to a square image: a backing needs an edge around it, and a wide picture
// makes room for that by itself.
Slot roomFor(const Slot& slot, bool hasBacking);

// The image; without one the title, unless the host shows it beside (then nothing is drawn). What
// has no colour of its own is light on a dark bar and dark on a light one; where the bar is not
// known (`bar` is absent) it is light on a dark backing of its own shape.
Bitmap renderItem(FontFaces& fonts, const Slot& slot, const std::optional<Appearance>& bar,
                  const ItemContent& content);

}  // namespace kelvane
