// Where on the screen a host means that it was clicked. Pure functions, any thread.
#pragma once

#include "platform/geometry.h"

namespace kelvane {

// Hosts tell pixels of the root window, but some count in larger ones of their own, `scale` of the
// screen's each. The pointer, in the screen's, was where the click was, or still is near it; it
// also serves for a place that is no number.
Point clickPlace(const Point& told, const Point& pointer, double scale);

}  // namespace kelvane
