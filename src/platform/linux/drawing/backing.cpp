#include "platform/linux/drawing/backing.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>
#include <vector>

#include "platform/linux/drawing/pixels.h"

namespace kelvane {
namespace {

// How much of each pixel the backing covers, 0 to 1.
struct Mask {
  int width;
  int height;
  std::vector<float> values;

  float& at(int x, int y) {
    return values[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
                  static_cast<std::size_t>(x)];
  }
};

Mask silhouetteOf(const Bitmap& bitmap) {
  // A faint frame bounds the silhouette as well as a strong one.
  constexpr float kStrength = 3;
  Mask mask{bitmap.width, bitmap.height, std::vector<float>(bitmap.pixels.size())};
  std::ranges::transform(bitmap.pixels, mask.values.begin(), [](std::uint32_t pixel) {
    return std::min(1.0F, kStrength * static_cast<float>(pixel >> 24) / 255.0F);
  });
  return mask;
}

// Each value becomes the one that `better` prefers among those up to `reach` away along a line;
// beyond the edges nothing counts.
template <typename Better>
std::vector<float> alongLine(const std::vector<float>& line, int reach, Better better) {
  const int size = static_cast<int>(line.size());
  std::vector<float> result(line.size());
  for (int i = 0; i < size; ++i) {
    float best = line[static_cast<std::size_t>(i)];
    for (int j = std::max(0, i - reach); j <= std::min(size - 1, i + reach); ++j)
      best = better(best, line[static_cast<std::size_t>(j)]);
    result[static_cast<std::size_t>(i)] = best;
  }
  return result;
}

template <typename Better>
Mask inBothDirections(Mask mask, int reach, Better better) {
  std::vector<float> line(static_cast<std::size_t>(mask.width));
  for (int y = 0; y < mask.height; ++y) {
    for (int x = 0; x < mask.width; ++x) line[static_cast<std::size_t>(x)] = mask.at(x, y);
    const auto done = alongLine(line, reach, better);
    for (int x = 0; x < mask.width; ++x) mask.at(x, y) = done[static_cast<std::size_t>(x)];
  }
  line.resize(static_cast<std::size_t>(mask.height));
  for (int x = 0; x < mask.width; ++x) {
    for (int y = 0; y < mask.height; ++y) line[static_cast<std::size_t>(y)] = mask.at(x, y);
    const auto done = alongLine(line, reach, better);
    for (int y = 0; y < mask.height; ++y) mask.at(x, y) = done[static_cast<std::size_t>(y)];
  }
  return mask;
}

// The same mask with empty pixels added on each side, or taken off when `border` is negative.
Mask framed(Mask mask, int border) {
  const int width = mask.width + 2 * border;
  const int height = mask.height + 2 * border;
  Mask result{
      width, height,
      std::vector<float>(static_cast<std::size_t>(width) * static_cast<std::size_t>(height))};
  for (int y = std::max(0, -border); y < std::min(mask.height, mask.height + border); ++y)
    for (int x = std::max(0, -border); x < std::min(mask.width, mask.width + border); ++x)
      result.at(x + border, y + border) = mask.at(x, y);
  return result;
}

// Morphological closing: grown and shrunk again, so that only openings are gone. It grows beyond
// the edges too, or it would not shrink back from them.
Mask closed(Mask mask, int gap) {
  const int reach = (gap + 1) / 2;
  const auto larger = [](float a, float b) { return std::max(a, b); };
  const auto smaller = [](float a, float b) { return std::min(a, b); };
  Mask grown = inBothDirections(framed(std::move(mask), reach), reach, larger);
  return framed(inBothDirections(std::move(grown), reach, smaller), -reach);
}

// All within `margin` is covered as its nearest pixel is, and less so over one pixel beyond it.
Mask widened(Mask mask, double margin) {
  if (margin <= 0) return mask;
  const int reach = static_cast<int>(std::ceil(margin));
  const int side = 2 * reach + 1;
  std::vector<float> kernel;
  for (int j = -reach; j <= reach; ++j)
    for (int i = -reach; i <= reach; ++i)
      kernel.push_back(static_cast<float>(std::clamp(margin + 1 - std::hypot(i, j), 0.0, 1.0)));

  Mask result = mask;
  for (int y = 0; y < mask.height; ++y) {
    for (int x = 0; x < mask.width; ++x) {
      const float value = mask.at(x, y);
      if (value == 0) continue;
      for (int j = std::max(0, y - reach); j <= std::min(mask.height - 1, y + reach); ++j) {
        for (int i = std::max(0, x - reach); i <= std::min(mask.width - 1, x + reach); ++i) {
          const auto at = static_cast<std::size_t>((j - y + reach) * side + (i - x + reach));
          result.at(i, j) = std::max(result.at(i, j), value * kernel[at]);
        }
      }
    }
  }
  return result;
}

// The pixels that are not empty: from the first to before the last, all 0 when there are none.
struct Extent {
  int left = 0, top = 0, right = 0, bottom = 0;
};

Extent extentOf(const Bitmap& bitmap) {
  Extent extent{bitmap.width, bitmap.height, 0, 0};
  for (int y = 0; y < bitmap.height; ++y) {
    for (int x = 0; x < bitmap.width; ++x) {
      const auto at = static_cast<std::size_t>(y) * static_cast<std::size_t>(bitmap.width) +
                      static_cast<std::size_t>(x);
      if (bitmap.pixels[at] == 0) continue;
      extent = {std::min(extent.left, x), std::min(extent.top, y), std::max(extent.right, x + 1),
                std::max(extent.bottom, y + 1)};
    }
  }
  return extent.right == 0 ? Extent{} : extent;
}

// How much of a pixel, by its centre, a rectangle with round corners covers.
double coverage(double x, double y, const Extent& extent, double margin, double radius) {
  const double halfWidth = (extent.right - extent.left) / 2.0 + margin;
  const double halfHeight = (extent.bottom - extent.top) / 2.0 + margin;
  const double corner = std::min({radius, halfWidth, halfHeight});
  const double dx = std::abs(x - (extent.left + extent.right) / 2.0) - (halfWidth - corner);
  const double dy = std::abs(y - (extent.top + extent.bottom) / 2.0) - (halfHeight - corner);
  const double outside = std::hypot(std::max(dx, 0.0), std::max(dy, 0.0));
  return std::clamp(corner - outside - std::min(std::max(dx, dy), 0.0) + 0.5, 0.0, 1.0);
}

// The bitmap over `color`, as far as `part(i)` says of the pixel with this index.
template <typename Part>
Bitmap backed(const Bitmap& bitmap, const Color& color, Part part) {
  Bitmap result = bitmap;
  for (std::size_t i = 0; i < result.pixels.size(); ++i)
    result.pixels[i] = over(bitmap.pixels[i], premultiplied(color, color.alpha * part(i)));
  return result;
}

}  // namespace

Bitmap withBacking(const Bitmap& bitmap, const Color& color, double gap, double margin) {
  if (bitmap.pixels.empty()) return bitmap;
  const int wholeGap = static_cast<int>(std::lround(std::clamp(gap, 0.0, 32.0)));
  const Mask mask = widened(closed(silhouetteOf(bitmap), wholeGap), std::clamp(margin, 0.0, 8.0));
  return backed(bitmap, color, [&](std::size_t i) { return static_cast<double>(mask.values[i]); });
}

Bitmap withPlate(const Bitmap& bitmap, const Color& color, double margin, double radius) {
  const Extent extent = extentOf(bitmap);
  if (extent.right == 0) return bitmap;
  const auto width = static_cast<std::size_t>(bitmap.width);
  return backed(bitmap, color, [&](std::size_t i) {
    return coverage(static_cast<double>(i % width) + 0.5, static_cast<double>(i / width) + 0.5,
                    extent, margin, radius);
  });
}

}  // namespace kelvane
