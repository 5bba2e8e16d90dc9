// A named picture as filled paths, so that every scale is exact. Plain value, any thread.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "platform/color.h"
#include "platform/geometry.h"

namespace kelvane {

// One step of an outline. `move` and `line` use points[0]; `curve` is a cubic Bézier with the
// control points [0] and [1] and the end [2]; `close` uses none.
struct PathStep {
  enum class Kind { move, line, curve, close };
  Kind kind = Kind::close;
  std::array<Point, 3> points{};
};

// One filled outline, even-odd, so an outline inside another one cuts a hole.
struct PictureLayer {
  std::vector<PathStep> path;
  double opacity = 1;          // 0.0 to 1.0, multiplied with the opacity of the whole drawing
  std::optional<Color> color;  // absent: the foreground of whoever shows the picture
};

struct Picture {
  std::string name;
  Size size;                         // natural size in points
  std::vector<PictureLayer> layers;  // in (0, 0) to size, y upwards, painted in this order
  bool isTemplate = true;            // only its alpha matters; the platform chooses the colour
};

}  // namespace kelvane
