// What the square form of the item is put together from, as outlines on a grid of pixels: edges on
// whole numbers are crisp. Pure, any thread.
#pragma once

#include "menubar/path_builder.h"
#include "platform/geometry.h"

namespace kelvane {

// A battery lying on its side, its terminal in the rightmost `line` of `rect`.
struct Gauge {
  Rect rect;
  double line;  // thickness of the frame
  double gap;   // between the frame and the charge

  PathBuilder frame() const;
  // The charge, for a level from 0 to 1; any charge at all can be seen.
  PathBuilder charge(double level) const;
  // The room inside the frame.
  Rect inside() const;
};

// A plug with its cord on the left and two pins on the right, as thick as `line`.
PathBuilder plugOutline(const Rect& rect, double line);

// A percent sign that six pixels are enough for.
PathBuilder percentOutline(const Rect& rect);

}  // namespace kelvane
