#include "platform/linux/drawing/shape.h"

#include <algorithm>
#include <utility>

namespace kelvane {
namespace {

constexpr std::size_t kMostPoints = 32'000;  // FreeType counts them with 15 bits
constexpr double kFarthest = 100'000;        // pixels; farther ones overflow its arithmetic

constexpr int kOn = FT_CURVE_TAG_ON;
constexpr int kCubic = FT_CURVE_TAG_CUBIC;

// FreeType counts in parts of 64. Rounded by hand: a call per coordinate costs more than the sum.
FT_Pos fixed(double pixels) {
  // In this order, so that what is no number is a number afterwards.
  const double parts = std::max(-kFarthest, std::min(kFarthest, pixels)) * 64;
  return static_cast<FT_Pos>(parts < 0 ? parts - 0.5 : parts + 0.5);
}

}  // namespace

bool Shape::makeRoomFor(std::size_t points) {
  const std::size_t all = points_.size() + points;
  if (all > kMostPoints) return false;
  if (all > points_.capacity()) points_.reserve(std::max(all, 2 * points_.capacity()));
  if (all > tags_.capacity()) tags_.reserve(std::max(all, 2 * tags_.capacity()));
  return true;
}

void Shape::addPoint(const Point& pixel, int tag) {
  points_.push_back({fixed(pixel.x), fixed(pixel.y)});
  tags_.push_back(static_cast<Tag>(tag));
}

void Shape::endContour() {
  const std::size_t begin =
      lastPoints_.empty() ? 0 : static_cast<std::size_t>(lastPoints_.back()) + 1;
  if (points_.size() > begin) lastPoints_.push_back(static_cast<Index>(points_.size() - 1));
}

void Shape::add(const std::vector<PathStep>& path, const Placement& placement) {
  if (!makeRoomFor(4 * path.size())) return;
  const auto at = [&](const Point& point) { return placement(point.x, point.y); };
  Point start;
  bool isOpen = false;
  for (const PathStep& step : path) {
    const auto& [a, b, c] = step.points;
    if (step.kind == PathStep::Kind::move || step.kind == PathStep::Kind::close) {
      endContour();
      isOpen = false;
      if (step.kind == PathStep::Kind::move) start = a;
      continue;
    }
    // What is closed goes on where it began.
    if (!std::exchange(isOpen, true)) addPoint(at(start), kOn);
    if (step.kind == PathStep::Kind::line) {
      addPoint(at(a), kOn);
    } else {
      addPoint(at(a), kCubic);
      addPoint(at(b), kCubic);
      addPoint(at(c), kOn);
    }
  }
  endContour();
}

void Shape::add(const FT_Outline& outline, const Placement& placement) {
  const auto points = static_cast<std::size_t>(outline.n_points);
  if (!makeRoomFor(points)) return;
  const std::size_t first = points_.size();
  for (std::size_t i = 0; i < points; ++i)
    addPoint(placement(static_cast<double>(outline.points[i].x),
                       static_cast<double>(outline.points[i].y)),
             outline.tags[i]);
  for (int i = 0; i < outline.n_contours; ++i)
    lastPoints_.push_back(
        static_cast<Index>(first + static_cast<std::size_t>(outline.contours[i])));
}

void Shape::rasterise(FT_Library library, FillRule rule, const Window& window,
                      const std::function<void(const Span&)>& paint) {
  FT_Outline outline{};
  outline.n_contours = static_cast<decltype(outline.n_contours)>(lastPoints_.size());
  outline.n_points = static_cast<decltype(outline.n_points)>(points_.size());
  outline.points = points_.data();
  outline.tags = tags_.data();
  outline.contours = lastPoints_.data();
  outline.flags = rule == FillRule::evenOdd ? FT_OUTLINE_EVEN_ODD_FILL : FT_OUTLINE_NONE;

  FT_Raster_Params parameters{};
  parameters.flags = FT_RASTER_FLAG_AA | FT_RASTER_FLAG_DIRECT | FT_RASTER_FLAG_CLIP;
  parameters.clip_box = {window.left, 0, window.right, window.height};
  parameters.user = const_cast<void*>(static_cast<const void*>(&paint));
  parameters.gray_spans = [](int row, int count, const FT_Span* spans, void* user) {
    const auto& tell = *static_cast<const std::function<void(const Span&)>*>(user);
    for (int i = 0; i < count; ++i)
      tell({row, spans[i].x, static_cast<int>(spans[i].len), spans[i].coverage});
  };
  FT_Outline_Render(library, &outline, &parameters);
}

}  // namespace kelvane
