#include "platform/macos/windows/view_renderer.h"

#include <cstdio>

#include "platform/portable/equal_widths.h"

namespace kelvane {

ViewRenderer::ViewRenderer(const ViewNode& tree, ViewContext& context)
    : parts_(tree, [&context](const ViewNode& node) { return makeNativePart(node, context); }),
      controller_(parts_.root().controller()) {
  if (!controller_) {
    controller_ = [[NSViewController alloc] init];
    NSView* view = parts_.root().view();
    controller_.view = view ? view : [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)];
  }
  layOut();
}

void ViewRenderer::apply(const std::vector<ViewStep>& steps) {
  for (const std::string& problem : parts_.apply(steps))
    std::fprintf(stderr, "kelvane: left out a change of a window: %s\n", problem.c_str());
  layOut();
}

void ViewRenderer::layOut() {
  EqualWidths widths;
  parts_.forEach(
      [&](NativePart& part) { widths.add(part.node().equalWidthGroup, part.labelWidth()); });
  parts_.forEach([&](NativePart& part) {
    if (const auto width = widths.of(part.node().equalWidthGroup)) part.setLabelWidth(*width);
  });
  // A window follows what its controllers prefer.
  parts_.forEach([](NativePart& part) {
    NSViewController* own = part.controller();
    if (part.node().kind == ViewNode::Kind::tab) own.preferredContentSize = own.view.fittingSize;
  });
}

}  // namespace kelvane
