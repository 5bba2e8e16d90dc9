#include "platform/portable/view_part.h"

#include <utility>

namespace kelvane {

using Kind = ViewNode::Kind;

ViewPart::ViewPart(const ViewNode& node, const Acted& acted) : node_(node), acted_(acted) {
  node_.children.clear();
}

void ViewPart::set(const ViewNode& node) {
  node_ = node;
  node_.children.clear();
  show();
}

void ViewPart::choose(int index) const {
  if (index >= 0 && std::cmp_less(index, node_.options.size()) && node_.selection != index)
    report(index);
}

void ViewPart::report(int value) const {
  if (node_.action.empty() || !acted_) return;
  // Who hears it may let go of the window, and of all that is named here.
  const Acted acted = acted_;
  const std::string action = node_.action;
  const std::string id = node_.id;
  acted(action, id, value);
}

ViewRow viewRow(Kind parent, Kind child) {
  if (child == Kind::sheet || child == Kind::alert) return ViewRow::none;
  if (parent == Kind::tabView && child != Kind::tab) return ViewRow::none;
  const bool isDialog = parent == Kind::sheet || parent == Kind::alert;
  return isDialog && child == Kind::button ? ViewRow::buttons : ViewRow::content;
}

}  // namespace kelvane
