// Points, sizes and rectangles of everything that is drawn. Plain values, no owner, any thread.
//
// Units are points: 1 point is 1 pixel at scale 1. In a canvas y grows upwards.
#pragma once

namespace kelvane {

struct Point {
  double x = 0;
  double y = 0;
  bool operator==(const Point&) const = default;
};

struct Size {
  double width = 0;
  double height = 0;
  bool operator==(const Size&) const = default;
};

struct Rect {
  double x = 0;
  double y = 0;
  double width = 0;
  double height = 0;
  bool operator==(const Rect&) const = default;
};

}  // namespace kelvane
