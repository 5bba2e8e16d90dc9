#include "platform/macos/drawing/mac_graphics.h"

#include <cmath>
#include <limits>

#include "platform/macos/drawing/attributed_string.h"
#include "platform/macos/foundation/strings.h"

namespace kelvane {
namespace {

NSSize unbounded() {
  constexpr CGFloat kMost = std::numeric_limits<CGFloat>::max();
  return NSMakeSize(kMost, kMost);
}

}  // namespace

Rect MacGraphics::inkBounds(std::string_view text, const TextStyle& style) {
  if (!(style.size > 0)) return {};
  const Rect ink = rectOf([nsString(text) boundingRectWithSize:unbounded()
                                                       options:NSStringDrawingUsesDeviceMetrics
                                                    attributes:textAttributes(style)
                                                       context:nil]);
  // A text without ink has a box at infinity.
  const bool hasInk = std::isfinite(ink.x) && std::isfinite(ink.y) && ink.width > 0 &&
                      ink.height > 0 && std::isfinite(ink.width) && std::isfinite(ink.height);
  return hasInk ? ink : Rect{};
}

Size MacGraphics::lineBounds(const AttributedText& text) {
  const NSSize size =
      [nsAttributedString(text) boundingRectWithSize:unbounded()
                                             options:NSStringDrawingUsesLineFragmentOrigin
                                             context:nil]
          .size;
  return {size.width, size.height};
}

double MacGraphics::smallSystemFontSize() { return NSFont.smallSystemFontSize; }

}  // namespace kelvane
