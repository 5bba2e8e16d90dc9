#include "platform/linux/windows/click_place.h"

#include <cmath>

namespace kelvane {
namespace {

double distance(const Point& a, const Point& b) { return std::hypot(a.x - b.x, a.y - b.y); }

}  // namespace

Point clickPlace(const Point& told, const Point& pointer, double scale) {
  if (!std::isfinite(told.x) || !std::isfinite(told.y)) return pointer;
  const Point scaled = {told.x * scale, told.y * scale};
  return distance(scaled, pointer) < distance(told, pointer) ? scaled : told;
}

}  // namespace kelvane
