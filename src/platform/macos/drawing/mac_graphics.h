// `Graphics` measured by AppKit, which the canvas draws with. Main thread.
#pragma once

#include "platform/graphics.h"

namespace kelvane {

class MacGraphics : public Graphics {
 public:
  Rect inkBounds(std::string_view text, const TextStyle& style) override;
  Size lineBounds(const AttributedText& text) override;
  double smallSystemFontSize() override;
};

}  // namespace kelvane
