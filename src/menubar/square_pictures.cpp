#include "menubar/square_pictures.h"

#include <algorithm>
#include <cmath>

namespace kelvane {

PathBuilder Gauge::frame() const {
  const double right = rect.x + rect.width - line;
  // A terminal in the middle of the side, to the pixel.
  const double edge = std::max(line, std::round(0.3 * rect.height));
  PathBuilder path;
  path.roundedFrame({rect.x, rect.y, rect.width - line, rect.height},
                    std::min(2 * line, rect.height / 3), line);
  path.roundedRect({right, rect.y + edge, line, rect.height - 2 * edge},
                   {.bottomRight = line / 2, .topRight = line / 2});
  return path;
}

Rect Gauge::inside() const {
  const double inset = line + gap;
  return {rect.x + inset, rect.y + inset, rect.width - line - 2 * inset, rect.height - 2 * inset};
}

PathBuilder Gauge::charge(double level) const {
  Rect box = inside();
  box.width = level > 0 ? std::clamp(box.width * level, 1.0, box.width) : 0;
  PathBuilder path;
  path.roundedRect(box, PathBuilder::all(std::min({line / 2, box.width / 2, gap})));
  return path;
}

PathBuilder plugOutline(const Rect& rect, double line) {
  const double pins = std::round(rect.width / 4), cord = std::round(rect.width / 5);
  const Rect body{rect.x + cord, rect.y, rect.width - cord - pins, rect.height};
  const double middle = rect.y + (rect.height - line) / 2;
  const double round = std::min(body.width, rect.height / 2);
  PathBuilder path;
  path.roundedRect(body, {.bottomLeft = round, .topLeft = round});
  path.roundedRect({rect.x, middle, cord, line}, {});
  for (const double y : {rect.y + line, rect.y + rect.height - 2 * line})
    path.roundedRect({body.x + body.width, y, pins, line}, {});
  return path;
}

PathBuilder percentOutline(const Rect& rect) {
  const bool isTiny = rect.height < 8;
  const double line = std::max(0.9, 0.14 * rect.height);
  const double dot = std::round((isTiny ? 0.36 : 0.44) * rect.height);
  const double right = rect.x + rect.width, top = rect.y + rect.height;
  PathBuilder path;
  for (const Rect& place : {Rect{rect.x, top - dot, dot, dot}, {right - dot, rect.y, dot, dot}}) {
    if (isTiny)
      path.roundedRect(place, PathBuilder::all(0.5));
    else
      path.roundedFrame(place, dot / 2, line);
  }
  // From below the one to above the other.
  const double inset = 0.1 * rect.width;
  path.polygon({{rect.x + inset, rect.y},
                {rect.x + inset + 1.3 * line, rect.y},
                {right - inset, top},
                {right - inset - 1.3 * line, top}});
  return path;
}

}  // namespace kelvane
