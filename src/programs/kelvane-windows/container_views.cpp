#include "programs/kelvane-windows/container_views.h"

#include <algorithm>
#include <cmath>

namespace kelvane {
namespace {

using Kind = ViewNode::Kind;

constexpr int kLineGap = 4;     // pixels between lines
constexpr int kColumnGap = 12;  // pixels between columns
constexpr double kLargestGap = 1000;

// What fills a column's width when it is leading: the rest is as wide as it has to be.
bool isWide(Kind kind) {
  return kind == Kind::divider || kind == Kind::form || kind == Kind::tabView ||
         kind == Kind::verticalStack;
}

}  // namespace

StackView::StackView(const ViewNode& node, ViewContext& context) : ViewWidget(node, context) {
  box_.set_hexpand();
  if (node.kind == Kind::horizontalStack) box_.set_halign(Gtk::Align::CENTER);
  frame_.append(box_);
  show();
}

void StackView::show() {
  showFrame(frame_);
  const bool isRow = node().kind == Kind::horizontalStack;
  box_.set_orientation(isRow ? Gtk::Orientation::HORIZONTAL : Gtk::Orientation::VERTICAL);
  const double own = isRow ? kColumnGap : kLineGap;
  const double spacing = node().spacing.value_or(own);
  box_.set_spacing(
      static_cast<int>(std::lround(spacing >= 0 ? std::min(spacing, kLargestGap) : own)));
  for (ViewWidget* child : children_) align(*child);
}

void StackView::place(ViewWidget& child, const Place& place) {
  align(child);
  placeIn(box_, child, place);
  children_.push_back(&child);
}

void StackView::remove(ViewWidget& child) {
  box_.remove(*child.widget());
  std::erase(children_, &child);
}

void StackView::align(ViewWidget& child) {
  const bool isCentered = node().alignment == ViewNode::Alignment::center;
  Gtk::Align across = isCentered ? Gtk::Align::CENTER : Gtk::Align::START;
  if (node().kind == Kind::horizontalStack) {
    child.widget()->set_valign(across);
    return;
  }
  if (child.node().kind == Kind::divider || (!isCentered && isWide(child.node().kind)))
    across = Gtk::Align::FILL;
  child.widget()->set_halign(across);
}

}  // namespace kelvane
