// The nodes that have no children: text, toggles, radio groups, buttons, dividers. Main thread.
#pragma once

#include "platform/macos/windows/native_part.h"

namespace kelvane {

class TextPart : public NativePart {
 public:
  TextPart(const ViewNode& node, ViewContext& context);

 private:
  void show() override;
  NSTextField* label_;
};

class TogglePart : public NativePart {
 public:
  TogglePart(const ViewNode& node, ViewContext& context);

 private:
  void show() override;
  void showState();
  KelvaneControlTarget* target_;
  NSButton* button_;
};

// A label, and one radio button for each option beside it.
class RadioGroupPart : public NativePart {
 public:
  RadioGroupPart(const ViewNode& node, ViewContext& context);

  double labelWidth() const override;
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

class ButtonPart : public NativePart {
 public:
  ButtonPart(const ViewNode& node, ViewContext& context);

 private:
  void show() override;
  KelvaneControlTarget* target_;
  NSButton* button_;
};

class DividerPart : public NativePart {
 public:
  DividerPart(const ViewNode& node, ViewContext& context);

 private:
  void show() override { showFrame(); }
};

}  // namespace kelvane
