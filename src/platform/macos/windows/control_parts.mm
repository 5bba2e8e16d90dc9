#include "platform/macos/windows/control_parts.h"

#include <cstddef>
#include <string>

#include "platform/macos/foundation/strings.h"

namespace kelvane {
namespace {

constexpr double kLineWidth = 400;  // points, where a text that is longer breaks
constexpr double kLabelGap = 8;     // points between a radio group's label and its options
constexpr double kOptionGap = 12;   // points between options side by side
constexpr double kLineGap = 6;      // points between options below each other

KelvaneControlTarget* makeTarget(std::function<void(NSInteger)> action) {
  return [[KelvaneControlTarget alloc] initWithAction:std::move(action)];
}

NSControlStateValue stateOf(bool isOn) {
  return isOn ? NSControlStateValueOn : NSControlStateValueOff;
}

}  // namespace

TextPart::TextPart(const ViewNode& node, ViewContext& context)
    : NativePart(node, context), label_([NSTextField wrappingLabelWithString:@""]) {
  label_.selectable = NO;
  label_.preferredMaxLayoutWidth = kLineWidth;
  wrap(label_);
  show();
}

void TextPart::show() {
  showFrame();
  label_.stringValue = nsString(node().label);
}

TogglePart::TogglePart(const ViewNode& node, ViewContext& context)
    : NativePart(node, context), target_(makeTarget([this](NSInteger) {
        // The click has turned it already.
        showState();
        toggle();
      })) {
  button_ = [NSButton checkboxWithTitle:@"" target:target_ action:@selector(act:)];
  wrap(button_);
  show();
}

void TogglePart::show() {
  showFrame();
  button_.title = nsString(node().label);
  showState();
}

void TogglePart::showState() { button_.state = stateOf(node().isOn.value_or(false)); }

RadioGroupPart::RadioGroupPart(const ViewNode& node, ViewContext& context)
    : NativePart(node, context),
      target_(makeTarget([this](NSInteger tag) {
        showSelection();
        choose(static_cast<int>(tag));
      })),
      label_([NSTextField labelWithString:@""]),
      labelWidth_([label_.widthAnchor constraintEqualToConstant:0]),
      options_([[NSStackView alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)]) {
  NSStackView* row = [[NSStackView alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)];
  row.orientation = NSUserInterfaceLayoutOrientationHorizontal;
  row.alignment = NSLayoutAttributeTop;
  row.spacing = kLabelGap;
  [row addArrangedSubview:label_];
  [row addArrangedSubview:options_];
  wrap(row);
  show();
}

double RadioGroupPart::labelWidth() const {
  labelWidth_.active = NO;
  return label_.fittingSize.width;
}

void RadioGroupPart::setLabelWidth(double width) {
  labelWidth_.constant = width;
  labelWidth_.active = YES;
}

void RadioGroupPart::show() {
  showFrame();
  label_.stringValue = nsString(node().label);
  label_.hidden = node().label.empty();
  label_.alignment =
      node().alignment == ViewNode::Alignment::center ? NSTextAlignmentCenter : NSTextAlignmentLeft;
  if (node().equalWidthGroup.empty()) labelWidth_.active = NO;
  options_.orientation = node().isHorizontal ? NSUserInterfaceLayoutOrientationHorizontal
                                             : NSUserInterfaceLayoutOrientationVertical;
  options_.alignment = node().isHorizontal ? NSLayoutAttributeCenterY : NSLayoutAttributeLeading;
  options_.spacing = node().isHorizontal ? kOptionGap : kLineGap;
  showOptions();
  showSelection();
}

void RadioGroupPart::showOptions() {
  const auto& wanted = node().options;
  while (options_.arrangedSubviews.count > wanted.size())
    [options_.arrangedSubviews.lastObject removeFromSuperview];
  while (options_.arrangedSubviews.count < wanted.size()) {
    NSButton* button = [NSButton radioButtonWithTitle:@"" target:target_ action:@selector(act:)];
    button.tag = static_cast<NSInteger>(options_.arrangedSubviews.count);
    [options_ addArrangedSubview:button];
  }
  for (NSButton* button in options_.arrangedSubviews)
    button.title = nsString(wanted[static_cast<std::size_t>(button.tag)]);
}

void RadioGroupPart::showSelection() {
  for (NSButton* button in options_.arrangedSubviews)
    button.state = stateOf(node().selection == static_cast<int>(button.tag));
}

ButtonPart::ButtonPart(const ViewNode& node, ViewContext& context)
    : NativePart(node, context), target_(makeTarget([this](NSInteger) { press(); })) {
  button_ = [NSButton buttonWithTitle:@"" target:target_ action:@selector(act:)];
  wrap(button_);
  show();
}

void ButtonPart::show() {
  showFrame();
  button_.title = nsString(node().label);
  button_.keyEquivalent = node().isDefault ? @"\r" : @"";
}

DividerPart::DividerPart(const ViewNode& node, ViewContext& context) : NativePart(node, context) {
  NSBox* line = [[NSBox alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)];
  line.boxType = NSBoxSeparator;
  wrap(line);
  show();
}

}  // namespace kelvane
