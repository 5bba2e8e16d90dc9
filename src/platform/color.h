// A colour and the appearance it is chosen for. Plain values, any thread.
#pragma once

namespace kelvane {

// sRGB, each component 0.0 to 1.0, alpha straight (not multiplied into the others).
struct Color {
  double red = 0;
  double green = 0;
  double blue = 0;
  double alpha = 1;
  bool operator==(const Color&) const = default;
};

// What the surface behind a drawing looks like: `dark` calls for a light foreground.
enum class Appearance { light, dark };

}  // namespace kelvane
