#include "platform/macos/windows/container_parts.h"

namespace kelvane {
namespace {

constexpr double kLineGap = 8;    // points between lines
constexpr double kColumnGap = 8;  // points between columns

}  // namespace

NSStackView* makeColumn() {
  NSStackView* column = [[NSStackView alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)];
  column.orientation = NSUserInterfaceLayoutOrientationVertical;
  column.alignment = NSLayoutAttributeLeading;
  column.spacing = kLineGap;
  return column;
}

StackPart::StackPart(const ViewNode& node, ViewContext& context)
    : NativePart(node, context), stack_(makeColumn()) {
  wrap(stack_);
  show();
}

void StackPart::show() {
  showFrame();
  const bool isRow = node().kind == ViewNode::Kind::horizontalStack;
  const bool isCentered = node().alignment == ViewNode::Alignment::center;
  stack_.orientation =
      isRow ? NSUserInterfaceLayoutOrientationHorizontal : NSUserInterfaceLayoutOrientationVertical;
  if (isRow)
    stack_.alignment = isCentered ? NSLayoutAttributeCenterY : NSLayoutAttributeTop;
  else
    stack_.alignment = isCentered ? NSLayoutAttributeCenterX : NSLayoutAttributeLeading;
  stack_.spacing = node().spacing.value_or(isRow ? kColumnGap : kLineGap);
}

void StackPart::place(NativePart& child, const Place& place) {
  // A row that is narrower than its room is in the middle of it.
  const bool isRow = node().kind == ViewNode::Kind::horizontalStack;
  [stack_ insertView:child.view()
             atIndex:place.index
           inGravity:isRow ? NSStackViewGravityCenter : NSStackViewGravityTop];
  // A line has no width of its own.
  if (child.node().kind == ViewNode::Kind::divider)
    [child.view().widthAnchor constraintEqualToAnchor:stack_.widthAnchor].active = YES;
}

void StackPart::remove(NativePart& child) { [child.view() removeFromSuperview]; }

}  // namespace kelvane
