#include "menubar/path_builder.h"

#include <algorithm>

namespace kelvane {
namespace {

// How far the control points of a quarter circle reach, as a part of its radius.
constexpr double kQuarterCircle = 0.5522847498;

}  // namespace

PathBuilder& PathBuilder::moveTo(Point to) {
  steps_.push_back({PathStep::Kind::move, {to}});
  return *this;
}

PathBuilder& PathBuilder::lineTo(Point to) {
  steps_.push_back({PathStep::Kind::line, {to}});
  return *this;
}

PathBuilder& PathBuilder::curveTo(Point control1, Point control2, Point end) {
  steps_.push_back({PathStep::Kind::curve, {control1, control2, end}});
  return *this;
}

PathBuilder& PathBuilder::close() {
  steps_.push_back({PathStep::Kind::close, {}});
  return *this;
}

PathBuilder& PathBuilder::polygon(std::initializer_list<Point> corners) {
  bool isFirst = true;
  for (const Point& corner : corners) {
    isFirst ? moveTo(corner) : lineTo(corner);
    isFirst = false;
  }
  return close();
}

PathBuilder& PathBuilder::roundedRect(const Rect& rect, const Corners& corners) {
  const double left = rect.x, right = rect.x + rect.width;
  const double bottom = rect.y, top = rect.y + rect.height;
  const auto reach = [](double radius) { return radius * (1 - kQuarterCircle); };
  steps_.reserve(steps_.size() + 10);  // the ten that follow
  moveTo({left + corners.bottomLeft, bottom});
  lineTo({right - corners.bottomRight, bottom});
  curveTo({right - reach(corners.bottomRight), bottom},
          {right, bottom + reach(corners.bottomRight)}, {right, bottom + corners.bottomRight});
  lineTo({right, top - corners.topRight});
  curveTo({right, top - reach(corners.topRight)}, {right - reach(corners.topRight), top},
          {right - corners.topRight, top});
  lineTo({left + corners.topLeft, top});
  curveTo({left + reach(corners.topLeft), top}, {left, top - reach(corners.topLeft)},
          {left, top - corners.topLeft});
  lineTo({left, bottom + corners.bottomLeft});
  curveTo({left, bottom + reach(corners.bottomLeft)}, {left + reach(corners.bottomLeft), bottom},
          {left + corners.bottomLeft, bottom});
  return close();
}

PathBuilder& PathBuilder::roundedFrame(const Rect& outer, double radius, double thickness) {
  roundedRect(outer, all(radius));
  return roundedRect({outer.x + thickness, outer.y + thickness, outer.width - 2 * thickness,
                      outer.height - 2 * thickness},
                     all(std::max(radius - thickness, 0.0)));
}

}  // namespace kelvane
