// A shape to be filled: outlines in pixels, y upwards, whose coverage FreeType's rasteriser finds.
// Main thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <type_traits>
#include <vector>

#include <freetype/freetype.h>
#include <freetype/ftoutln.h>
#include <ft2build.h>

#include "platform/geometry.h"
#include "platform/picture.h"

namespace kelvane {

// From the units of an outline to pixels.
struct Placement {
  Point origin;
  Size unit;  // pixels per unit

  Point operator()(double x, double y) const {
    return {origin.x + x * unit.width, origin.y + y * unit.height};
  }
};

enum class FillRule { evenOdd, winding };

class Shape {
 public:
  // What would exceed FreeType's count of points, thousands of characters, is left out.
  void add(const std::vector<PathStep>& path, const Placement& placement);
  void add(const FT_Outline& outline, const Placement& placement);

  // A piece of a row, its pixels covered alike: 1 to 255 for hardly to wholly. `row` counts from
  // the bottom.
  struct Span {
    int row;
    int start;
    int length;
    std::uint8_t coverage;
  };
  // Pixels from column `left` to before `right`, and from row 0 to before `height`.
  struct Window {
    int left;
    int right;
    int height;
  };
  // Calls `paint` for what is covered in the window.
  void rasterise(FT_Library library, FillRule rule, const Window& window,
                 const std::function<void(const Span&)>& paint);

 private:
  // FreeType's versions differ in the signs of these.
  using Tag = std::remove_pointer_t<decltype(FT_Outline::tags)>;
  using Index = std::remove_pointer_t<decltype(FT_Outline::contours)>;

  // False when that would be more points than FreeType can count.
  bool makeRoomFor(std::size_t points);
  void addPoint(const Point& pixel, int tag);
  void endContour();

  std::vector<FT_Vector> points_;
  std::vector<Tag> tags_;
  std::vector<Index> lastPoints_;  // of each contour
};

}  // namespace kelvane
