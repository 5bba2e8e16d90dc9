#include "programs/kelvane-windows/shown_texts.h"

#include <string_view>
#include <utility>

#include <pango/pangocairo.h>

#include "platform/linux/glib/gobject_ptr.h"

namespace kelvane {
namespace {

constexpr std::string_view kSmallSign = "\uFE6A";

// Asked of the toolkit's own fonts: `FontFaces` gives back what it has loaded.
bool isSmallSignCovered() {
  const GObjectPtr<PangoContext> context(
      pango_font_map_create_context(pango_cairo_font_map_get_default()));
  const GObjectPtr<PangoLayout> layout(pango_layout_new(context.get()));
  pango_layout_set_text(layout.get(), kSmallSign.data(), static_cast<int>(kSmallSign.size()));
  return pango_layout_get_unknown_glyphs_count(layout.get()) == 0;
}

}  // namespace

std::string ShownTexts::of(std::string text) {
  auto at = text.find(kSmallSign);
  if (at == std::string::npos) return text;
  if (!isCovered_) isCovered_ = isSmallSignCovered();
  if (*isCovered_) return text;
  for (; at != std::string::npos; at = text.find(kSmallSign, at + 1))
    text.replace(at, kSmallSign.size(), "%");
  return text;
}

ViewNode ShownTexts::of(ViewNode node) {
  node.label = of(std::move(node.label));
  node.help = of(std::move(node.help));
  for (std::string& option : node.options) option = of(std::move(option));
  for (ViewNode& child : node.children) child = of(std::move(child));
  return node;
}

std::vector<ViewStep> ShownTexts::of(std::vector<ViewStep> steps) {
  for (ViewStep& step : steps) step.node = of(std::move(step.node));
  return steps;
}

std::vector<ShownLine> ShownTexts::of(std::vector<ShownLine> lines) {
  for (ShownLine& line : lines) {
    line.title = of(std::move(line.title));
    if (line.attributedTitle)
      for (TextRun& run : line.attributedTitle->runs) run.text = of(std::move(run.text));
    line.submenu = of(std::move(line.submenu));
  }
  return lines;
}

}  // namespace kelvane
