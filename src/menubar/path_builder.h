// Writes outlines down in few words. Value, any thread. Coordinates in points, y upwards.
#pragma once

#include <initializer_list>
#include <vector>

#include "platform/picture.h"

namespace kelvane {

class PathBuilder {
 public:
  PathBuilder& moveTo(Point to);
  PathBuilder& lineTo(Point to);
  PathBuilder& curveTo(Point control1, Point control2, Point end);
  PathBuilder& close();

  PathBuilder& polygon(std::initializer_list<Point> corners);

  // Radii of the corners; none may be more than half of a side.
  struct Corners {
    double bottomLeft = 0;
    double bottomRight = 0;
    double topRight = 0;
    double topLeft = 0;
  };
  static constexpr Corners all(double radius) { return {radius, radius, radius, radius}; }
  PathBuilder& roundedRect(const Rect& rect, const Corners& corners);

  // The area between a rounded rectangle and the same one moved inwards by `thickness`.
  PathBuilder& roundedFrame(const Rect& outer, double radius, double thickness);

  const std::vector<PathStep>& steps() const& { return steps_; }
  std::vector<PathStep> steps() && { return std::move(steps_); }

 private:
  std::vector<PathStep> steps_;
};

}  // namespace kelvane
