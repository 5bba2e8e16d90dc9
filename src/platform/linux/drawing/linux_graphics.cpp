#include "platform/linux/drawing/linux_graphics.h"

#include <algorithm>

#include "platform/linux/drawing/text_layout.h"

namespace kelvane {

Rect LinuxGraphics::inkBounds(std::string_view text, const TextStyle& style) {
  return kelvane::inkBounds(layOutLine(faces_, text, style));
}

Size LinuxGraphics::lineBounds(const AttributedText& text) {
  double width = 0, ascent = 0, descent = 0;
  for (const TextRun& run : text.runs) {
    if (run.text.empty()) continue;
    const TextStyle style = runStyle(run);
    const FontMetrics metrics = fontMetrics(faces_, style.size, style.weight);
    width += layOutLine(faces_, run.text, style).advance;
    ascent = std::max(ascent, metrics.ascent);
    descent = std::max(descent, metrics.descent);
  }
  return {width, ascent + descent};
}

TextStyle runStyle(const TextRun& run) {
  return {run.fontSize.value_or(kDefaultFontSize), run.weight, 0, run.color};
}

}  // namespace kelvane
