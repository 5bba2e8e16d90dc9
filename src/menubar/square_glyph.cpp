#include "menubar/square_glyph.h"

#include <algorithm>
#include <string>
#include <utility>

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

// What the square says: a level without its sign, or a time.
struct SquareText {
  std::string text;
  bool hasSign = false;  // drawn small beside it
};

SquareText squareText(const ItemContext& context) {
  if (!context.settings.showPercentage.get()) return {timeOrFullText(context)};
  std::string digits = percentageText(context);
  digits.resize(digits.find(kPercentSign));
  // Three digits leave no room for the sign.
  const bool hasSign = context.settings.showPercentageSignInIcon.get() && digits.size() < 3;
  return {std::move(digits), hasSign};
}

TextStyle squareStyle(double size) {
  return {.size = size, .weight = FontWeight::medium, .kern = -0.03 * size};
}

// The text as large as the box allows, at most `largestSize`; a sign stands at its top right.
void drawFittedText(const ItemContext& context, Canvas& canvas, const Rect& box,
                    double largestSize) {
  constexpr double kSignSize = 0.5;  // of the text's
  constexpr double kSignGap = 0.06;
  constexpr const char* kSign = "%";
  const SquareText content = squareText(context);
  TextStyle style = squareStyle(largestSize);
  Rect ink, sign;
  double signRoom = 0;
  const auto measure = [&] {
    ink = context.graphics.inkBounds(content.text, style);
    if (!content.hasSign) return;
    sign = context.graphics.inkBounds(kSign, squareStyle(kSignSize * style.size));
    signRoom = sign.width + kSignGap * style.size;
  };
  measure();
  while (style.size > 1 && (ink.width + signRoom > box.width || ink.height > box.height)) {
    style = squareStyle(style.size - 0.25);
    measure();
  }
  // The ink stands in the middle, whatever hangs below the baseline in this text.
  const double baseline = box.y + (box.height - ink.height) / 2 - ink.y;
  const double left = box.x + (box.width - ink.width - signRoom) / 2;
  canvas.drawText(content.text, {left - 1, baseline, ink.width + 2, box.height}, style);
  if (!content.hasSign) return;
  const double top = baseline + ink.y + ink.height;
  canvas.drawText(kSign,
                  {left + ink.width + signRoom - sign.width - 1, top - sign.height - sign.y,
                   sign.width + 2, box.height},
                  squareStyle(kSignSize * style.size));
}

// How the settings size the gauge, in design points.
struct GaugeForm {
  double margin;       // to the left and right
  double frameHeight;  // whole points, like all in it, so that it is crisp at scale 1
  double frameOpacity;
};

GaugeForm gaugeForm(const ItemContext& context) {
  const bool isLarge = context.settings.largeIcon.get();
  return {.margin = isLarge ? 0.0 : 1.0,
          .frameHeight = isLarge ? 7.0 : 6.0,
          .frameOpacity = context.settings.oldIconStyle.get() ? 0.95 : 0.6};
}

// A frame with its terminal, the level inside, a bolt before it while on power.
struct GaugePictures {
  Picture frame;
  Picture level;
};

GaugePictures gaugePictures(const GaugeForm& form, double level, bool hasBolt) {
  constexpr double kTerminal = 2;
  constexpr double kGap = 1;  // between frame and charge
  constexpr Size kSize{kDesignHeight, 8};
  const double height = form.frameHeight;
  const double left = form.margin + (hasBolt ? 6 : 0);
  const double frameWidth = kDesignHeight - form.margin - left - kTerminal;
  PathBuilder frame, charge, bolt;
  frame.roundedFrame({left, 0, frameWidth, height}, 2, 1);
  frame.roundedRect({left + frameWidth + 0.6, height / 2 - 1.25, 1.4, 2.5},
                    {.bottomRight = 1.2, .topRight = 1.2});
  const double width = (frameWidth - 2 - 2 * kGap) * level;
  charge.roundedRect({left + 1 + kGap, 1 + kGap, width, height - 2 - 2 * kGap},
                     PathBuilder::all(std::min(0.5, width / 2)));
  if (hasBolt) bolt = boltOutline({form.margin, 0, 5, height + 1});
  return {{"GaugeFrame", kSize, {{frame.steps(), 1, {}}}, true},
          {"GaugeLevel", kSize, {{charge.steps(), 1, {}}, {bolt.steps(), 1, {}}}, true}};
}

void drawGauge(const ItemContext& context, Canvas& canvas, const Ruler& ruler, double y) {
  const GaugeForm form = gaugeForm(context);
  const double level = std::clamp(context.battery.percentage(), 0.0, 1.0);
  const GaugePictures gauge = gaugePictures(form, level, context.battery.isPowerAdapterConnected());
  const Rect rect = ruler.at(0, y, kDesignHeight, 8);
  canvas.drawPicture(gauge.frame, rect, form.frameOpacity);
  canvas.drawPicture(gauge.level, rect, 1);
}

void drawSquare(const ItemContext& context, const Slot& slot, Canvas& canvas, const Rect& rect) {
  const Ruler ruler{rect, rect.height / kDesignHeight};
  canvas.setImageInterpolation(ImageInterpolation::high);
  if (slot.showsTextBeside) {
    drawGauge(context, canvas, ruler, 7);
  } else if (context.settings.textOnlyIcon.get()) {
    if (context.settings.smallMenuBarText.get())
      drawFittedText(context, canvas, ruler.at(2, 4, 18, 14), 13 * ruler.unit);
    else
      drawFittedText(context, canvas, ruler.at(0.5, 3, 21, 16), 17 * ruler.unit);
  } else {
    // The alternative style has the smaller text, as in the wide glyph.
    const double size = context.settings.oldIconStyle.get() ? 15 : 16;
    const Rect box =
        context.settings.largeIcon.get() ? ruler.at(0.25, 8.5, 21.5, 13) : ruler.at(1, 8, 20, 12);
    drawFittedText(context, canvas, box, size * ruler.unit);
    drawGauge(context, canvas, ruler, context.settings.largeIcon.get() ? 0 : 1);
  }
}

}  // namespace

Image makeSquareImage(const ItemContext& context, const Slot& slot) {
  return {{slot.height, slot.height}, false, [context, slot](Canvas& canvas, const Rect& rect) {
            drawSquare(context, slot, canvas, rect);
          }};
}

}  // namespace kelvane
