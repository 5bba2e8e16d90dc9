#include "platform/macos/windows/dialog_parts.h"

#include <cstddef>

#include "platform/macos/foundation/strings.h"
#include "platform/macos/windows/container_parts.h"
#include "platform/macos/windows/native_alert.h"
#include "platform/portable/alert_run.h"

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
    : NativePart(node, context),
      cancelled_([[KelvaneControlTarget alloc] initWithAction:[this](NSInteger) { press(); }]),
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

void SheetPart::place(NativePart& child, const Place& place) {
  NSStackView* row = place.row == ViewRow::buttons ? buttons_ : content_;
  [row insertArrangedSubview:child.view() atIndex:static_cast<NSInteger>(place.index)];
}

void SheetPart::remove(NativePart& child) { [child.view() removeFromSuperview]; }

AlertPart::AlertPart(const ViewNode& node, ViewContext& context)
    : NativePart(node, context), self_(std::make_shared<AlertPart*>(this)) {}

AlertPart::~AlertPart() {
  *self_ = nullptr;
  if (NSWindow* parent = alert_.window.sheetParent) [parent endSheet:alert_.window];
}

void AlertPart::show() { alert_.messageText = nsString(node().label); }

void AlertPart::place(NativePart& child, const Place& place) {
  auto& row = place.row == ViewRow::buttons ? buttons_ : texts_;
  row.insert(row.begin() + static_cast<std::ptrdiff_t>(place.index), &child);
}

void AlertPart::remove(NativePart& child) {
  std::erase(texts_, &child);
  std::erase(buttons_, &child);
}

void AlertPart::appear() {
  if (alert_) return;
  ViewNode whole = node();
  for (const auto* row : {&texts_, &buttons_})
    for (const NativePart* child : *row) whole.children.push_back(child->node());
  alert_ = nsAlert(alertOf(whole));
  const std::shared_ptr<AlertPart*> self = self_;
  [alert_ beginSheetModalForWindow:context_.window
                 completionHandler:^(NSModalResponse response) {
                   if (*self) (*self)->ended(response);
                 }];
}

void AlertPart::ended(NSModalResponse response) {
  const auto button = pressedButton(buttons_.size(), buttonPlace(response));
  const ViewPart& pressed = button ? *buttons_[*button] : *this;
  pressed.press();
}

}  // namespace kelvane
