// Arithmetic on pixels of the form that `Bitmap` has. Pure, any thread.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "platform/color.h"

namespace kelvane {

// The colour's own alpha is replaced by `alpha`.
inline std::uint32_t premultiplied(const Color& color, double alpha) {
  const auto byte = [](double v) {
    return static_cast<std::uint32_t>(std::lround(std::clamp(v, 0.0, 1.0) * 255));
  };
  return byte(alpha) << 24 | byte(color.red * alpha) << 16 | byte(color.green * alpha) << 8 |
         byte(color.blue * alpha);
}

// All four channels times `part`, 0 to 255 for nothing to all, rounded. Two channels at a time, and
// without a division, which is what costs in a redraw.
inline std::uint32_t faded(std::uint32_t pixel, std::uint32_t part) {
  constexpr std::uint32_t kTwo = 0x00FF00FF;
  const auto two = [part](std::uint32_t channels) {
    const std::uint32_t product = channels * part + 0x00800080;
    return (product + (product >> 8 & kTwo)) >> 8 & kTwo;
  };
  return two(pixel & kTwo) | two(pixel >> 8 & kTwo) << 8;
}

// Not premultiplied any more.
inline std::uint32_t straight(std::uint32_t pixel) {
  const std::uint32_t alpha = pixel >> 24;
  if (alpha == 0) return 0;
  const auto channel = [=](int shift) {
    const std::uint32_t value = pixel >> shift & 0xFF;
    return std::min(255U, (value * 255 + alpha / 2) / alpha) << shift;
  };
  return alpha << 24 | channel(16) | channel(8) | channel(0);
}

// Of premultiplied pixels no channel of these sums exceeds 255.
inline std::uint32_t over(std::uint32_t top, std::uint32_t bottom) {
  return bottom == 0 ? top : top + faded(bottom, 255 - (top >> 24));
}

// `top` only where `bottom` is, whose alpha stays.
inline std::uint32_t atop(std::uint32_t top, std::uint32_t bottom) {
  const std::uint32_t mixed = faded(top, bottom >> 24) + faded(bottom, 255 - (top >> 24));
  return (mixed & 0xFFFFFF) | (bottom & 0xFF000000);
}

}  // namespace kelvane
