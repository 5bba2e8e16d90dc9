#include "platform/macos/windows/dialog_parts.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "platform/macos/foundation/strings.h"
#include "platform/macos/windows/container_parts.h"
#include "platform/macos/windows/control_parts.h"

// A sheet that tells of Escape.
@interface KelvaneSheet : NSWindow
@property(nonatomic, weak) KelvaneControlTarget* cancelTarget;
@end

@implementation KelvaneSheet

- (void)cancelOperation:(id)sender {
  (void)sender;
  [self.cancelTarget act:nil];
}

@end

namespace kelvane {
namespace {

constexpr double kMargin = 16;  // points around the buttons

NSStackView* makeButtonRow() {
  NSStackView* row = [[NSStackView alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)];
  row.orientation = NSUserInterfaceLayoutOrientationHorizontal;
  row.edgeInsets = NSEdgeInsets{0, kMargin, kMargin, kMargin};
  return row;
}

}  // namespace

SheetPart::SheetPart(const ViewNode& node, ViewContext& context)
    : ViewPart(node, context),
      cancelled_([[KelvaneControlTarget alloc] initWithAction:[this](NSInteger) { act(0); }]),
      content_(makeColumn()),
      buttons_(makeButtonRow()) {
  KelvaneSheet* sheet = [[KelvaneSheet alloc] initWithContentRect:NSMakeRect(0, 0, 1, 1)
                                                        styleMask:NSWindowStyleMaskTitled
                                                          backing:NSBackingStoreBuffered
                                                            defer:YES];
  sheet.releasedWhenClosed = NO;
  sheet.cancelTarget = cancelled_;
  sheet_ = sheet;
  NSStackView* whole = makeColumn();
  // The buttons stand at the lower right.
  whole.alignment = NSLayoutAttributeTrailing;
  [whole addArrangedSubview:content_];
  [whole addArrangedSubview:buttons_];
  sheet_.contentView = whole;
}

SheetPart::~SheetPart() {
  if (NSWindow* parent = sheet_.sheetParent) [parent endSheet:sheet_];
  [sheet_ orderOut:nil];
}

void SheetPart::appear() {
  if (sheet_.sheetParent) return;
  [sheet_ setContentSize:sheet_.contentView.fittingSize];
  [context_.window beginSheet:sheet_ completionHandler:nil];
}

void SheetPart::place(ViewPart& child, NSInteger index) {
  const bool isButton = child.node().kind == ViewNode::Kind::button;
  NSStackView* row = isButton ? buttons_ : content_;
  // Siblings of the other row come before or after in the tree, but don't count here.
  const auto last = static_cast<NSInteger>(row.arrangedSubviews.count);
  [row insertArrangedSubview:child.view() atIndex:std::min(index, last)];
}

void SheetPart::remove(ViewPart& child) { [child.view() removeFromSuperview]; }

AlertPart::AlertPart(const ViewNode& node, ViewContext& context)
    : ViewPart(node, context),
      alert_([[NSAlert alloc] init]),
      self_(std::make_shared<AlertPart*>(this)) {
  show();
}

AlertPart::~AlertPart() {
  *self_ = nullptr;
  if (NSWindow* parent = alert_.window.sheetParent) [parent endSheet:alert_.window];
}

void AlertPart::show() { alert_.messageText = nsString(node().label); }

void AlertPart::place(ViewPart& child, NSInteger index) {
  const auto place = std::min(static_cast<std::size_t>(index), children_.size());
  children_.insert(children_.begin() + static_cast<std::ptrdiff_t>(place), &child);
}

void AlertPart::remove(ViewPart& child) { std::erase(children_, &child); }

void AlertPart::appear() {
  if (alert_.window.sheetParent) return;
  std::string message;
  for (ViewPart* child : children_) {
    const ViewNode& each = child->node();
    if (each.kind == ViewNode::Kind::button) [alert_ addButtonWithTitle:nsString(each.label)];
    if (each.kind == ViewNode::Kind::text) message += (message.empty() ? "" : "\n") + each.label;
  }
  if (!message.empty()) alert_.informativeText = nsString(message);
  const std::shared_ptr<AlertPart*> self = self_;
  [alert_ beginSheetModalForWindow:context_.window
                 completionHandler:^(NSModalResponse response) {
                   if (*self) (*self)->ended(response);
                 }];
}

void AlertPart::ended(NSModalResponse response) {
  NSInteger button = response - NSAlertFirstButtonReturn;
  for (ViewPart* child : children_) {
    const auto* part = dynamic_cast<const ButtonPart*>(child);
    if (!part || button-- != 0) continue;
    part->press();
    return;
  }
  act(0);
}

}  // namespace kelvane
