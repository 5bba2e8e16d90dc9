#include "menubar/square_glyph.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "battery/battery.h"
#include "menubar/item_text.h"
#include "menubar/pictures.h"
#include "menubar/square_pictures.h"
#include "platform/graphics.h"
#include "settings/settings_keys.h"
#include "store/setting_key.h"

namespace kelvane {
namespace {

// The square in whole pixels, as people see it: what lies between two pixels is a blur.
class PixelSquare {
 public:
  PixelSquare(Canvas& canvas, const Rect& rect)
      : canvas_(canvas),
        rect_(rect),
        scale_(canvas.scale()),
        side_(std::floor(rect.height * scale_ + 1e-6)) {}

  double side() const { return side_; }
  double scale() const { return scale_; }
  // Too small for everything at once.
  bool isSmall() const { return side_ < 20; }
  // What a length comes to that was designed for 22 pixels.
  double of(double length, double least = 1) const {
    return std::max(least, std::round(length * side_ / 22));
  }
  // How thick an outline is.
  double line() const { return std::max(1.0, std::round(side_ / 20)); }
  Rect inPoints(const Rect& pixels) const {
    return {rect_.x + pixels.x / scale_, rect_.y + pixels.y / scale_, pixels.width / scale_,
            pixels.height / scale_};
  }

  void draw(const char* name, PathBuilder path, double opacity = 1) const {
    Picture picture{name, {side_, side_}, {}, true};
    picture.layers.push_back({std::move(path).steps(), 1, {}});
    canvas_.drawPicture(picture, inPoints({0, 0, side_, side_}), opacity);
  }
  Canvas& canvas() const { return canvas_; }

 private:
  Canvas& canvas_;
  Rect rect_;
  double scale_;
  double side_;
};

// What the square says: a level without its sign, or a time.
struct SquareText {
  std::string text;
  std::string widest;  // of its kind, so that the size stays the same while the text changes
  bool hasSign = false;
};

SquareText squareText(const ItemContext& context, bool hasRoomForSign) {
  if (!context.settings.showPercentage.get()) {
    const std::string text = timeOrFullText(context);
    return {text, text.find(':') == std::string::npos ? text : "0:00"};
  }
  std::string digits = percentageText(context);
  digits.resize(digits.find(kPercentSign));
  if (digits.size() > 2) return {digits, digits};
  return {std::move(digits), "00",
          hasRoomForSign && context.settings.showPercentageSignInIcon.get()};
}

TextStyle squareStyle(double size) { return {.size = size, .weight = FontWeight::medium}; }

// The text as large as the box allows, its digits a whole number of pixels high and at most
// `largest`; a sign stands at its top right.
void drawFittedText(const ItemContext& context, const PixelSquare& square, const Rect& box,
                    double largest) {
  const SquareText content = squareText(context, !square.isSmall());
  const auto inkOf = [&](const std::string& text, double size) {
    Rect ink = context.graphics.inkBounds(text, squareStyle(size));
    for (double* each : {&ink.x, &ink.y, &ink.width, &ink.height}) *each *= square.scale();
    return ink;
  };
  // A digit without overshoot.
  constexpr double kProbe = 100;
  const double digitHeight = inkOf("7", kProbe).height / kProbe;
  if (digitHeight <= 0) return;

  double height = std::floor(std::min(largest, box.height)), size = 0, sign = 0, signRoom = 0;
  Rect ink;
  for (; height >= 1; --height) {
    size = height / digitHeight;
    sign = std::max(6.0, std::round(0.62 * height));
    signRoom = content.hasSign ? sign + std::max(1.0, std::round(0.1 * height)) : 0;
    ink = inkOf(content.text, size);
    if (std::max(ink.width, inkOf(content.widest, size).width) + signRoom <= box.width) break;
  }
  const double left = box.x + std::round((box.width - ink.width - signRoom) / 2);
  // What is no digit stands in the middle of where digits would.
  const bool hasDigits = content.text.find_first_of("0123456789") != std::string::npos;
  double baseline = box.y + std::floor((box.height - height) / 2);
  const double top = baseline + height;
  if (!hasDigits) baseline += std::round((height - ink.height) / 2 - ink.y);
  constexpr double kOverhang = 2;  // a glyph may reach beyond its advance
  Rect line = square.inPoints({left - ink.x - kOverhang, baseline, 2 * kOverhang, box.height});
  line.width += context.graphics.lineBounds({{{content.text, size, FontWeight::medium, {}}}}).width;
  square.canvas().drawText(content.text, line, squareStyle(size));
  if (content.hasSign)
    square.draw("PercentSign", percentOutline({std::ceil(left + ink.width) + signRoom - sign,
                                               top - sign, sign, sign}));
}

// What stands before the gauge on power: a plug once it is full, else a bolt.
void drawPowerMark(const ItemContext& context, const PixelSquare& square, const Rect& rect) {
  if (isFullyChargedOnPower(context))
    square.draw("SquarePlug", plugOutline(rect, square.line()));
  else
    square.draw("SquareBolt", boltOutline(rect));
}

void drawGauge(const ItemContext& context, const PixelSquare& square, const Gauge& gauge,
               double frameOpacity) {
  const double level = std::clamp(context.battery.percentage(), 0.0, 1.0);
  square.draw("GaugeFrame", gauge.frame(),
              context.settings.oldIconStyle.get() ? 0.95 : frameOpacity);
  square.draw("GaugeLevel", gauge.charge(level));
}

// A text with a gauge below it.
void drawTextAndGauge(const ItemContext& context, const PixelSquare& square) {
  const bool isLarge = context.settings.largeIcon.get();
  const double margin = isLarge || square.isSmall() ? 0 : square.of(1);
  const double height = square.of(isLarge ? 8 : 7, 5);
  const double gap = square.isSmall() ? 0 : square.of(1);
  Rect rect{margin, margin, square.side() - 2 * margin, height};
  if (context.battery.isPowerAdapterConnected()) {
    const double width = isFullyChargedOnPower(context) ? square.of(9) : square.of(5);
    drawPowerMark(context, square, {rect.x, rect.y, width, height});
    rect.x += width + square.of(1);
    rect.width -= width + square.of(1);
  }
  drawGauge(context, square, {rect, square.line(), gap}, 0.6);
  const double bottom = margin + height + 1;
  drawFittedText(context, square, {0, bottom, square.side(), square.side() - bottom},
                 // The alternative style has the smaller text, as in the wide glyph.
                 context.settings.oldIconStyle.get() ? square.of(10, 8) : square.of(11, 9));
}

// A text alone, with a bolt below it on power.
void drawTextAlone(const ItemContext& context, const PixelSquare& square) {
  const bool isSmallText = context.settings.smallMenuBarText.get();
  const double margin = isSmallText && !square.isSmall() ? square.of(1) : 0;
  Rect box{margin, 0, square.side() - 2 * margin, square.side()};
  if (context.battery.isPowerAdapterConnected()) {
    const double height = square.of(isSmallText ? 7 : 8, 6), width = std::round(0.7 * height);
    square.draw("SquareBolt", boltOutline({std::round((square.side() - width) / 2), square.of(1),
                                           width, height}));
    box.y = height + square.of(2);
    box.height -= box.y;
  }
  drawFittedText(context, square, box, isSmallText ? square.of(8, 7) : square.of(11, 8));
}

// The battery without a text, for a host that shows that beside it.
void drawBody(const ItemContext& context, const PixelSquare& square) {
  const double side = square.side();
  const double height = 2 * square.of(context.settings.largeIcon.get() ? 8 : 6.5);
  const double line = square.line();
  Rect rect{0, std::round((side - height) / 2), side, height};
  if (isFullyChargedOnPower(context)) {
    const Gauge gauge{rect, line, line};
    square.draw("GaugeFrame", gauge.frame(), 0.9);
    Rect plug = gauge.inside();
    plug.x += line;
    plug.width -= 2 * line;
    drawPowerMark(context, square, plug);
    return;
  }
  if (context.battery.isPowerAdapterConnected()) {
    const double width = square.of(7);
    drawPowerMark(context, square, {0, rect.y, width, height});
    rect.x += width + line;
    rect.width -= width + line;
  }
  drawGauge(context, square, {rect, line, line}, 0.75);
}

void drawSquare(const ItemContext& context, const Slot& slot, const PixelSquare& square) {
  square.canvas().setImageInterpolation(ImageInterpolation::high);
  const bool isTextOnly = context.settings.textOnlyIcon.get();
  if (!slot.showsTextBeside)
    isTextOnly ? drawTextAlone(context, square) : drawTextAndGauge(context, square);
  else if (!isTextOnly)
    drawBody(context, square);
  else if (context.battery.isPowerAdapterConnected())
    square.draw("SquareBolt",
                boltOutline({square.of(6), square.of(3), square.of(10), square.of(16)}));
}

}  // namespace

Image makeSquareImage(const ItemContext& context, const Slot& slot) {
  return {{slot.height, slot.height}, false, [context, slot](Canvas& canvas, const Rect& rect) {
            drawSquare(context, slot, {canvas, rect});
          }};
}

}  // namespace kelvane
