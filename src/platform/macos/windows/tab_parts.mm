#include "platform/macos/windows/tab_parts.h"

#include "platform/macos/foundation/strings.h"
#include "platform/macos/windows/container_parts.h"
#include "platform/macos/windows/symbols.h"

namespace kelvane {

TabPart::TabPart(const ViewNode& node, ViewContext& context)
    : NativePart(node, context),
      column_(makeColumn()),
      controller_([[NSViewController alloc] init]),
      item_([NSTabViewItem tabViewItemWithViewController:controller_]) {
  wrap(column_);
  width_ = [view().widthAnchor constraintEqualToConstant:0];
  controller_.view = view();
  show();
}

void TabPart::setWidth(std::optional<double> width) {
  if (width) width_.constant = *width;
  width_.active = width.has_value();
}

void TabPart::place(NativePart& child, const Place& place) {
  [column_ insertArrangedSubview:child.view() atIndex:static_cast<NSInteger>(place.index)];
  [child.view().widthAnchor constraintEqualToAnchor:column_.widthAnchor].active = YES;
}

void TabPart::remove(NativePart& child) { [child.view() removeFromSuperview]; }

void TabPart::show() {
  showFrame();
  controller_.title = nsString(node().label);
  item_.label = nsString(node().label);
  item_.image = symbolImage(node().symbol, node().label);
}

TabsPart::TabsPart(const ViewNode& node, ViewContext& context)
    : NativePart(node, context), controller_([[NSTabViewController alloc] init]) {
  controller_.tabStyle = NSTabViewControllerTabStyleToolbar;
  // The window's title is its opener's.
  controller_.canPropagateSelectedChildViewControllerTitle = NO;
  show();
}

void TabsPart::show() {
  for (TabPart* tab : tabs_) tab->setWidth(node().width);
}

void TabsPart::place(NativePart& child, const Place& place) {
  auto& tab = static_cast<TabPart&>(child);
  tab.setWidth(node().width);
  [controller_ insertTabViewItem:tab.item() atIndex:static_cast<NSInteger>(place.index)];
  tabs_.push_back(&tab);
}

void TabsPart::remove(NativePart& child) {
  std::erase(tabs_, &child);
  [controller_ removeTabViewItem:static_cast<TabPart&>(child).item()];
}

}  // namespace kelvane
