#include "kit/percent_digits.h"

#include <cmath>
#include <cstdio>

namespace kelvane {

std::string percentDigits(double fraction) {
  const double percent = fraction * 100;
  // By far the usual case, and at each redraw; printf's arithmetic for any number is slow.
  if (std::abs(percent) < 1e6) return std::to_string(static_cast<int>(std::nearbyint(percent)));
  char text[512];
  std::snprintf(text, sizeof text, "%.0f", percent);
  return text;
}

}  // namespace kelvane
