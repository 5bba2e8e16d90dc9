// The application's named colours. Any thread; constants.
#pragma once

#include <string_view>

#include "platform/color.h"

namespace kelvane {

struct NamedColor {
  std::string_view name;
  Color light;  // on a light surface
  Color dark;   // on a dark one

  constexpr const Color& under(Appearance appearance) const {
    return appearance == Appearance::dark ? dark : light;
  }
};

// "EarlyLowBattery" (amber), "FinalLowBattery" (red): both at least 4.5 : 1 against white on a
// light bar and black on a dark one. Any other name is a fatal error.
const NamedColor& namedColor(std::string_view name);

}  // namespace kelvane
