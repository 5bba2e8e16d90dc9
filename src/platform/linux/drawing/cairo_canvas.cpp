#include "platform/linux/drawing/cairo_canvas.h"

#include <algorithm>
#include <cmath>

#include <freetype/freetype.h>
#include <freetype/ftoutln.h>
#include <ft2build.h>

#include "platform/linux/drawing/glyph_outline.h"

namespace kelvane {
namespace {

// The context as it was, whatever is drawn in between.
class SavedState {
 public:
  explicit SavedState(cairo_t* context) : context_(context) { cairo_save(context_); }
  ~SavedState() { cairo_restore(context_); }
  SavedState(const SavedState&) = delete;
  SavedState& operator=(const SavedState&) = delete;

 private:
  cairo_t* context_;
};

// One number that is not finite would put the context into its error state for good.
bool isDrawable(const Rect& rect) {
  return std::isfinite(rect.x) && std::isfinite(rect.y) && rect.width > 0 && rect.height > 0 &&
         std::isfinite(rect.width) && std::isfinite(rect.height);
}

void setColor(cairo_t* context, const Color& color, double opacity) {
  cairo_set_source_rgba(context, color.red, color.green, color.blue, color.alpha * opacity);
}

void addPath(cairo_t* context, const std::vector<PathStep>& path) {
  for (const PathStep& step : path) {
    const auto& [a, b, c] = step.points;
    switch (step.kind) {
      case PathStep::Kind::move:
        cairo_move_to(context, a.x, a.y);
        break;
      case PathStep::Kind::line:
        cairo_line_to(context, a.x, a.y);
        break;
      case PathStep::Kind::curve:
        cairo_curve_to(context, a.x, a.y, b.x, b.y, c.x, c.y);
        break;
      case PathStep::Kind::close:
        cairo_close_path(context);
        break;
    }
  }
}

// Adds the outline of a glyph to the context's path. Cairo's own glyph caches would keep a scaled
// font and its pictures for every size that shrinking to fit tries.
class OutlinePath {
 public:
  OutlinePath(cairo_t* context, const PlacedGlyph& placed, const Point& start)
      : context_(context),
        unit_(placed.size / placed.glyph.face->units_per_EM),
        origin_{start.x + placed.x, start.y} {}

  void add(FT_Outline& outline) {
    const FT_Outline_Funcs functions = {
        [](const FT_Vector* to, void* self) { return of(self).move(*to); },
        [](const FT_Vector* to, void* self) { return of(self).line(*to); },
        [](const FT_Vector* control, const FT_Vector* to, void* self) {
          return of(self).quadratic(*control, *to);
        },
        [](const FT_Vector* a, const FT_Vector* b, const FT_Vector* to, void* self) {
          return of(self).cubic(*a, *b, *to);
        },
        0,
        0};
    FT_Outline_Decompose(&outline, &functions, this);
    if (isOpen_) cairo_close_path(context_);
  }

 private:
  static OutlinePath& of(void* self) { return *static_cast<OutlinePath*>(self); }

  Point place(const FT_Vector& v) const {
    return {origin_.x + static_cast<double>(v.x) * unit_,
            origin_.y + static_cast<double>(v.y) * unit_};
  }

  int move(const FT_Vector& to) {
    if (isOpen_) cairo_close_path(context_);
    isOpen_ = true;
    pen_ = place(to);
    cairo_move_to(context_, pen_.x, pen_.y);
    return 0;
  }

  int line(const FT_Vector& to) {
    pen_ = place(to);
    cairo_line_to(context_, pen_.x, pen_.y);
    return 0;
  }

  // The same curve one degree higher.
  int quadratic(const FT_Vector& control, const FT_Vector& to) {
    const Point c = place(control);
    const Point end = place(to);
    cairo_curve_to(context_, (pen_.x + 2 * c.x) / 3, (pen_.y + 2 * c.y) / 3, (end.x + 2 * c.x) / 3,
                   (end.y + 2 * c.y) / 3, end.x, end.y);
    pen_ = end;
    return 0;
  }

  int cubic(const FT_Vector& first, const FT_Vector& second, const FT_Vector& to) {
    const Point a = place(first);
    const Point b = place(second);
    pen_ = place(to);
    cairo_curve_to(context_, a.x, a.y, b.x, b.y, pen_.x, pen_.y);
    return 0;
  }

  cairo_t* context_;
  double unit_;
  Point origin_;
  Point pen_;
  bool isOpen_ = false;
};

}  // namespace

CairoCanvas::CairoCanvas(cairo_t* context, FontFaces& faces, const Color& foreground)
    : context_(context), faces_(faces), foreground_(foreground) {}

void CairoCanvas::drawPicture(const Picture& picture, const Rect& rect, double opacity) {
  if (!isDrawable(rect) || !(picture.size.width > 0) || !(picture.size.height > 0)) return;
  const SavedState saved(context_);
  cairo_translate(context_, rect.x, rect.y);
  cairo_scale(context_, rect.width / picture.size.width, rect.height / picture.size.height);
  cairo_set_fill_rule(context_, CAIRO_FILL_RULE_EVEN_ODD);

  // Overlapping layers must not show through each other, so they fade together.
  const bool isGroup = opacity < 1 && picture.layers.size() > 1;
  if (isGroup) cairo_push_group(context_);
  for (const PictureLayer& layer : picture.layers) {
    cairo_new_path(context_);
    addPath(context_, layer.path);
    setColor(context_, layer.color.value_or(foreground_), layer.opacity * (isGroup ? 1 : opacity));
    cairo_fill(context_);
  }
  if (isGroup) {
    cairo_pop_group_to_source(context_);
    cairo_paint_with_alpha(context_, std::clamp(opacity, 0.0, 1.0));
  }
}

void CairoCanvas::drawText(std::string_view text, const Rect& rect, const TextStyle& style) {
  if (!std::isfinite(rect.x) || !std::isfinite(rect.y) || !(rect.width > 0)) return;
  const TextLine line = layOutLine(faces_, text, style);
  if (line.glyphs.empty()) return;
  const SavedState saved(context_);
  double x0 = 0, y0 = 0, x1 = 0, y1 = 0;
  cairo_clip_extents(context_, &x0, &y0, &x1, &y1);
  cairo_new_path(context_);
  cairo_rectangle(context_, rect.x, y0, rect.width, y1 - y0);  // cut off at the sides only
  cairo_clip(context_);
  drawLine(line, {rect.x + (rect.width - line.advance) / 2, rect.y}, style.color);
}

void CairoCanvas::drawLine(const TextLine& line, const Point& start,
                           const std::optional<Color>& color) {
  const SavedState saved(context_);
  cairo_new_path(context_);
  cairo_set_fill_rule(context_, CAIRO_FILL_RULE_WINDING);
  for (const PlacedGlyph& placed : line.glyphs) {
    if (loadOutline(placed.glyph)) {
      OutlinePath(context_, placed, start).add(placed.glyph.face->glyph->outline);
    }
  }
  setColor(context_, color.value_or(foreground_), 1);
  cairo_fill(context_);
}

void CairoCanvas::fill(const Rect& rect, const Color& color, CompositeOperation operation) {
  if (!isDrawable(rect)) return;
  const SavedState saved(context_);
  cairo_new_path(context_);
  cairo_rectangle(context_, rect.x, rect.y, rect.width, rect.height);
  cairo_set_operator(context_, operation == CompositeOperation::sourceAtop ? CAIRO_OPERATOR_ATOP
                                                                           : CAIRO_OPERATOR_OVER);
  setColor(context_, color, 1);
  cairo_fill(context_);
}

}  // namespace kelvane
