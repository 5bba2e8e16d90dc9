#include "platform/macos/windows/native_part.h"

#include <utility>

#include "platform/macos/foundation/strings.h"
#include "platform/macos/windows/container_parts.h"
#include "platform/macos/windows/control_parts.h"
#include "platform/macos/windows/dialog_parts.h"
#include "platform/macos/windows/tab_parts.h"

@implementation KelvaneControlTarget {
  std::function<void(NSInteger)> action_;
}

- (instancetype)initWithAction:(std::function<void(NSInteger tag)>)action {
  if ((self = [super init])) action_ = std::move(action);
  return self;
}

// What it calls may let go of the control and of this.
- (void)act:(NSControl*)sender {
  const auto action = action_;
  action(sender.tag);
}

@end

namespace kelvane {
namespace {

constexpr double kPadding = 16;  // points, the system's standard one

}  // namespace

void NativePart::wrap(NSView* inner) {
  frame_ = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)];
  frame_.translatesAutoresizingMaskIntoConstraints = NO;
  inner.translatesAutoresizingMaskIntoConstraints = NO;
  [frame_ addSubview:inner];
  leading_ = [inner.leadingAnchor constraintEqualToAnchor:frame_.leadingAnchor];
  trailing_ = [frame_.trailingAnchor constraintEqualToAnchor:inner.trailingAnchor];
  top_ = [inner.topAnchor constraintEqualToAnchor:frame_.topAnchor];
  bottom_ = [frame_.bottomAnchor constraintEqualToAnchor:inner.bottomAnchor];
  width_ = [frame_.widthAnchor constraintEqualToConstant:0];
  [NSLayoutConstraint activateConstraints:@[ leading_, trailing_, top_, bottom_ ]];
}

void NativePart::showFrame() {
  leading_.constant = trailing_.constant = kPadding * node().horizontalPaddings;
  top_.constant = kPadding * node().verticalPaddings + node().paddingTop;
  bottom_.constant = kPadding * node().verticalPaddings + node().paddingBottom;
  if (node().width) width_.constant = *node().width;
  width_.active = node().width.has_value();
  frame_.toolTip = node().help.empty() ? nil : nsString(node().help);
}

std::unique_ptr<NativePart> makeNativePart(const ViewNode& node, ViewContext& context) {
  switch (node.kind) {
    case ViewNode::Kind::text:
      return std::make_unique<TextPart>(node, context);
    case ViewNode::Kind::toggle:
      return std::make_unique<TogglePart>(node, context);
    case ViewNode::Kind::radioGroup:
      return std::make_unique<RadioGroupPart>(node, context);
    case ViewNode::Kind::button:
      return std::make_unique<ButtonPart>(node, context);
    case ViewNode::Kind::divider:
      return std::make_unique<DividerPart>(node, context);
    case ViewNode::Kind::verticalStack:
    case ViewNode::Kind::horizontalStack:
    case ViewNode::Kind::form:
      return std::make_unique<StackPart>(node, context);
    case ViewNode::Kind::tabView:
      return std::make_unique<TabsPart>(node, context);
    case ViewNode::Kind::tab:
      return std::make_unique<TabPart>(node, context);
    case ViewNode::Kind::sheet:
      return std::make_unique<SheetPart>(node, context);
    case ViewNode::Kind::alert:
      return std::make_unique<AlertPart>(node, context);
  }
  return nullptr;
}

}  // namespace kelvane
