#include "menubar/battery_glyph.h"

#include <string>
#include <utility>

#include "battery/battery.h"
#include "menubar/item_text.h"
#include "menubar/pictures.h"
#include "platform/graphics.h"
#include "settings/settings_keys.h"
#include "store/setting_key.h"

namespace kelvane {
namespace {

const Picture& bodyPicture(bool isCharging) {
  return namedPicture(isCharging ? "BatteryChargingIcon" : "BatteryIcon");
}

// Where text and plug go: inside the frame, and not under the bolt.
Rect textBox(const ItemContext& context, const Rect& rect) {
  constexpr double kTerminalWidth = 2.0;
  constexpr double kInset = 2.7;
  Rect box{rect.x + kInset, rect.y + kInset, rect.width - kTerminalWidth - 2 * kInset,
           rect.height - 2 * kInset};
  if (showsChargingIcon(context)) {
    // The natural difference, also for the large icon.
    const double bolt = bodyPicture(true).size.width - bodyPicture(false).size.width;
    box.x += bolt;
    box.width -= bolt;
  }
  return box;
}

void drawPlug(Canvas& canvas, const Rect& box) {
  const Picture& plug = namedPicture("PowerIcon");
  const Size size{0.7 * plug.size.width, 0.7 * plug.size.height};
  canvas.drawPicture(plug,
                     {box.x + (box.width - size.width) / 2, box.y + (box.height - size.height) / 2,
                      size.width, size.height},
                     1);
}

void drawText(const ItemContext& context, Canvas& canvas, const Rect& box) {
  const bool isOldStyle = context.settings.oldIconStyle.get();
  const bool isLarge = context.settings.largeIcon.get();
  const bool showsPercentage = context.settings.showPercentage.get();
  const bool showsSign = context.settings.showPercentageSignInIcon.get();

  const std::string text = showsPercentage ? withoutUnwantedSign(context, percentageText(context))
                                           : context.battery.timeRemainingText();
  TextStyle style{.size = isOldStyle ? 9.5 : 10.0, .weight = FontWeight::medium};
  if (isLarge) style.size *= 1.1;
  style.kern = isOldStyle ? -0.2 : -0.4;

  Rect ink = context.graphics.inkBounds(text, style);
  while (ink.width >= 0.99 * box.width) {
    style.size -= 0.2;
    ink = context.graphics.inkBounds(text, style);
  }

  // The nudges are optical: the sign is narrow on its right, and "100" the widest text of all.
  double y = box.y + (box.height - ink.height) / 2 + 0.3;
  if (isLarge) y += 0.1;
  if (showsPercentage && !showsSign) y -= 0.1;
  double x = box.x;
  if (showsPercentage && showsSign) x += isLarge ? 1.4 : 1.2;
  if (text == std::string("100") + kPercentSign) {
    x -= 1.0;
    y += 0.1;
  }
  canvas.drawText(text, {x, y, box.width, box.height}, style);
}

void drawGlyph(const ItemContext& context, const Picture& body, Canvas& canvas, const Rect& rect) {
  const Rect box = textBox(context, rect);
  canvas.setImageInterpolation(ImageInterpolation::high);
  const bool isFull = isFullyChargedOnPower(context);
  const bool isOpaque = context.settings.oldIconStyle.get() || isFull;
  canvas.drawPicture(body, rect, isOpaque ? 0.9 : 0.5);
  if (isFull)
    drawPlug(canvas, box);
  else
    drawText(context, canvas, box);
}

}  // namespace

Image makeGlyphImage(const ItemContext& context) {
  const Picture& body = bodyPicture(showsChargingIcon(context));
  Size size = body.size;
  if (context.settings.largeIcon.get()) {
    size.width *= 1.1;
    size.height *= 1.1;
  }
  return {size, false, [context, &body](Canvas& canvas, const Rect& rect) {
            drawGlyph(context, body, canvas, rect);
          }};
}

Image warningTinted(const Image& image, const Color& color) {
  return {image.size, false, [draw = image.draw, color](Canvas& canvas, const Rect& rect) {
            draw(canvas, rect);
            canvas.fill(rect, color, CompositeOperation::sourceAtop);
          }};
}

double iconItemLength(const ItemContext& context) {
  return bodyPicture(showsChargingIcon(context)).size.width *
         (context.settings.largeIcon.get() ? 1.2 : 1.0);
}

}  // namespace kelvane
