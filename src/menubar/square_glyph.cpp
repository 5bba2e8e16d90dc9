#include "menubar/square_glyph.h"

#include <algorithm>
#include <string>

#include "battery/battery.h"
#include "menubar/item_text.h"
#include "menubar/path_builder.h"
#include "menubar/pictures.h"
#include "platform/graphics.h"
#include "settings/settings_keys.h"
#include "store/setting_key.h"

namespace kelvane {
namespace {

// Designed for 22 points; other heights scale it.
constexpr double kDesignHeight = 22;

struct Ruler {
  Rect rect;
  double unit;  // points per design point
  Rect at(double x, double y, double width, double height) const {
    return {rect.x + x * unit, rect.y + y * unit, width * unit, height * unit};
  }
};

// The digits alone: in a square every point counts, and the gauge says that it is a level.
std::string squareText(const ItemContext& context) {
  std::string text =
      context.settings.showPercentage.get() ? percentageText(context) : timeOrFullText(context);
  if (const auto sign = text.find(kPercentSign); sign != std::string::npos) text.resize(sign);
  return text;
}

void drawFittedText(const ItemContext& context, Canvas& canvas, const Rect& box,
                    double largestSize) {
  const std::string text = squareText(context);
  TextStyle style{.size = largestSize, .weight = FontWeight::medium};
  style.kern = -0.03 * style.size;
  Rect ink = context.graphics.inkBounds(text, style);
  while (style.size > 1 && (ink.width > box.width || ink.height > box.height)) {
    style.size -= 0.25;
    style.kern = -0.03 * style.size;
    ink = context.graphics.inkBounds(text, style);
  }
  // The baseline stands on ink, whatever hangs below it in this text.
  const double baseline = box.y + (box.height - ink.height) / 2 - ink.y;
  canvas.drawText(text, {box.x, baseline, box.width, box.height}, style);
}

// The gauge in design points: a frame with its terminal, the level inside, a bolt before it while
// on power.
Picture gaugePicture(double level, bool hasBolt) {
  const double left = hasBolt ? 6 : 0;
  const double frameWidth = kDesignHeight - left - 2;
  PathBuilder frame, charge, bolt;
  frame.roundedFrame({left, 0, frameWidth, 7}, 2, 1);
  frame.roundedRect({left + frameWidth + 0.6, 2.25, 1.4, 2.5},
                    {.bottomRight = 1.2, .topRight = 1.2});
  // One whole point between frame and charge, so that both are crisp at scale 1.
  const double width = (frameWidth - 4) * level;
  charge.roundedRect({left + 2, 2, width, 3}, PathBuilder::all(std::min(0.5, width / 2)));
  if (hasBolt) bolt = boltOutline({0.2, 0, 5, 8});
  return {"Gauge",
          {kDesignHeight, 8},
          {{frame.steps(), 0.75, {}}, {charge.steps(), 1, {}}, {bolt.steps(), 1, {}}},
          true};
}

void drawGauge(const ItemContext& context, Canvas& canvas, const Ruler& ruler, double y) {
  const double level = std::clamp(context.battery.percentage(), 0.0, 1.0);
  canvas.drawPicture(gaugePicture(level, context.battery.isPowerAdapterConnected()),
                     ruler.at(0, y, kDesignHeight, 8), 1);
}

}  // namespace

Image makeSquareImage(const ItemContext& context, const Slot& slot) {
  return {{slot.height, slot.height}, false, [context, slot](Canvas& canvas, const Rect& rect) {
            const Ruler ruler{rect, rect.height / kDesignHeight};
            canvas.setImageInterpolation(ImageInterpolation::high);
            if (slot.showsTextBeside)
              drawGauge(context, canvas, ruler, 7);
            else if (context.settings.textOnlyIcon.get())
              drawFittedText(context, canvas, ruler.at(0.5, 3, 21, 16), 17 * ruler.unit);
            else {
              drawFittedText(context, canvas, ruler.at(0.5, 8.5, 21, 12.5), 16 * ruler.unit);
              drawGauge(context, canvas, ruler, 0);
            }
          }};
}

}  // namespace kelvane
