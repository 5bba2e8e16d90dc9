#include "programs/kelvane-windows/view_widget.h"

#include <algorithm>
#include <cmath>

#include "programs/kelvane-windows/accessibility.h"
#include "programs/kelvane-windows/container_views.h"
#include "programs/kelvane-windows/control_views.h"
#include "programs/kelvane-windows/dialog_views.h"
#include "programs/kelvane-windows/tab_views.h"

namespace kelvane {
namespace {

constexpr int kSidePadding = 18;     // pixels; once is enough, so that all lines begin at one edge
constexpr double kEndPadding = 9;    // pixels, for each time
constexpr double kLargest = 10'000;  // pixels; what a tree asks beyond that is a mistake

int pixels(double points) {
  return std::isfinite(points) ? static_cast<int>(std::lround(std::clamp(points, 0.0, kLargest)))
                               : 0;
}

}  // namespace

void ViewWidget::showFrame(Gtk::Widget& widget) const {
  const int side = node().horizontalPaddings > 0 ? kSidePadding : 0;
  const int ends = pixels(kEndPadding * node().verticalPaddings);
  widget.set_margin_start(side);
  widget.set_margin_end(side);
  widget.set_margin_top(ends + pixels(node().paddingTop));
  widget.set_margin_bottom(ends + pixels(node().paddingBottom));
  widget.set_size_request(node().width ? std::max(pixels(*node().width) - 2 * side, 0) : -1, -1);
  setHelp(widget.gobj(), node().help);
}

void placeIn(Gtk::Box& box, ViewWidget& child, const ViewWidget::Place& place) {
  if (place.previous)
    box.insert_child_after(*child.widget(), *place.previous->widget());
  else
    box.insert_child_at_start(*child.widget());
}

std::unique_ptr<ViewWidget> makeViewWidget(const ViewNode& node, ViewContext& context) {
  switch (node.kind) {
    case ViewNode::Kind::text:
      return std::make_unique<TextView>(node, context);
    case ViewNode::Kind::toggle:
      return std::make_unique<ToggleView>(node, context);
    case ViewNode::Kind::radioGroup:
      return std::make_unique<RadioGroupView>(node, context);
    case ViewNode::Kind::button:
      return std::make_unique<ButtonView>(node, context);
    case ViewNode::Kind::divider:
      return std::make_unique<DividerView>(node, context);
    case ViewNode::Kind::verticalStack:
    case ViewNode::Kind::horizontalStack:
    case ViewNode::Kind::form:
      return std::make_unique<StackView>(node, context);
    case ViewNode::Kind::tabView:
      return std::make_unique<TabsView>(node, context);
    case ViewNode::Kind::tab:
      return std::make_unique<TabView>(node, context);
    case ViewNode::Kind::sheet:
      return std::make_unique<SheetView>(node, context);
    case ViewNode::Kind::alert:
      return std::make_unique<AlertView>(node, context);
  }
  return nullptr;
}

}  // namespace kelvane
