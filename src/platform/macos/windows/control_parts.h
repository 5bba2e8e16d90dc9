// The nodes that have no children: text, toggles, radio groups, buttons, dividers. Main thread.
#pragma once

#include <optional>

#include "platform/macos/windows/view_part.h"

namespace kelvane {

class TextPart : public ViewPart {
 public:
  TextPart(const ViewNode& node, ViewContext& context);

 private:
  void show() override;
  NSTextField* label_;
};

class TogglePart : public ViewPart {
 public:
  TogglePart(const ViewNode& node, ViewContext& context);

 private:
  void show() override;
  KelvaneControlTarget* target_;
  NSButton* button_;
};

// A label, and one radio button for each option beside it.
class RadioGroupPart : public ViewPart {
 public:
  RadioGroupPart(const ViewNode& node, ViewContext& context);

  std::optional<double> labelWidth() const override;
  void setLabelWidth(double width) override;

 private:
  void show() override;
  void showOptions();
  void showSelection();
  KelvaneControlTarget* target_;
  NSTextField* label_;
  NSLayoutConstraint* labelWidth_;
  NSStackView* options_;
};

class ButtonPart : public ViewPart {
 public:
  ButtonPart(const ViewNode& node, ViewContext& context);
  void press() const { act(0); }

 private:
  void show() override;
  KelvaneControlTarget* target_;
  NSButton* button_;
};

class DividerPart : public ViewPart {
 public:
  DividerPart(const ViewNode& node, ViewContext& context);

 private:
  void show() override { showFrame(); }
};

}  // namespace kelvane
