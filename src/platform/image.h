// A picture that is drawn when it is needed, at the scale of the screen it is shown on.
#pragma once

#include <functional>

#include "platform/canvas.h"
#include "platform/geometry.h"

namespace kelvane {

struct Image {
  Size size;  // points
  // Only the alpha of what is drawn matters; the platform paints it in its own foreground.
  bool isTemplate = false;
  // Called on the main thread each time the image is rendered, with an empty, transparent canvas of
  // its own (so compositing sees nothing but this image) and the rectangle to fill.
  std::function<void(Canvas&, const Rect&)> draw;
};

}  // namespace kelvane
