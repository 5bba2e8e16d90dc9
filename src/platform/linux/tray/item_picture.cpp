#include "platform/linux/tray/item_picture.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/linux/drawing/backing.h"

namespace kelvane {
namespace {

// The text colours of the usual light and dark themes, near enough to each other.
constexpr Color kLight{0.95, 0.95, 0.95, 1};
constexpr Color kDark{0.15, 0.16, 0.17, 1};
// What a light glyph stands on where the bar's colour is not known; in points.
constexpr Color kBacking{0.16, 0.17, 0.19, 0.92};
constexpr double kBackingGap = 8;
constexpr double kBackingMargin = 1;
constexpr double kPlateRadius = 3;

// In the middle of `room`, at a whole pixel.
double centred(double size, double room, double scale) {
  return std::round((room - size) / 2 * scale) / scale;
}

}  // namespace

ItemLayout layoutOf(const Slot& slot, double length, const Size& image) {
  const bool isWide = slot.shape == Slot::Shape::wide;
  double factor = image.height > slot.height ? slot.height / image.height : 1;
  if (!isWide && image.width * factor > slot.height) factor = slot.height / image.width;
  const Size shown{image.width * factor, image.height * factor};
  const double wanted = length == kSquareStatusItemLength ? slot.height : length;
  const Size picture{isWide ? std::max(shown.width, wanted) : slot.height, slot.height};
  return {picture,
          {centred(shown.width, picture.width, slot.scale),
           centred(shown.height, picture.height, slot.scale), shown.width, shown.height}};
}

Slot roomFor(const Slot& slot, bool hasBacking) {
  Slot room = slot;
  if (hasBacking && slot.shape == Slot::Shape::square) room.height -= 2 * kBackingMargin;
  return room;
}

Bitmap renderItem(FontFaces& fonts, const Slot& slot, const std::optional<Appearance>& bar,
                  const ItemContent& content) {
  const Color foreground = bar == Appearance::light ? kDark : kLight;
  // A backing needs room beside a picture that is as wide as its slot.
  const double margin = !bar && slot.shape == Slot::Shape::wide ? kBackingMargin : 0;
  Bitmap bitmap;
  if (content.image || slot.showsTextBeside) {
    const Image inner = content.image.value_or(Image{});
    ItemLayout layout = layoutOf(slot, content.length, inner.size);
    layout.picture.width += 2 * margin;
    layout.bounds.x += margin;
    Image whole{layout.picture, inner.isTemplate, {}};
    if (inner.draw)
      whole.draw = [&](Canvas& canvas, const Rect&) { inner.draw(canvas, layout.bounds); };
    bitmap = renderImage(fonts, whole, slot.scale, foreground);
  } else if (!content.title.runs.empty()) {
    const double length = std::max(content.length, slot.height) + 2 * margin;
    bitmap = renderText(fonts, content.title, length, slot.height, slot.scale, foreground);
  }
  if (bar) return bitmap;
  if (slot.shape == Slot::Shape::square)
    return withPlate(bitmap, kBacking, kBackingMargin * slot.scale, kPlateRadius * slot.scale);
  return withBacking(bitmap, kBacking, kBackingGap * slot.scale, kBackingMargin * slot.scale);
}

}  // namespace kelvane
