// Tabs, as buttons in the window's tool bar. Main thread.
#pragma once

#include <vector>

#include "platform/macos/windows/native_part.h"

namespace kelvane {

class TabPart : public NativePart {
 public:
  TabPart(const ViewNode& node, ViewContext& context);
  NSViewController* controller() const override { return controller_; }
  NSTabViewItem* item() const { return item_; }
  // Points; absent: by content.
  void setWidth(std::optional<double> width);
  void place(NativePart& child, const Place& place) override;
  void remove(NativePart& child) override;

 private:
  void show() override;
  NSStackView* column_;
  NSLayoutConstraint* width_;
  NSViewController* controller_;
  NSTabViewItem* item_;
};

class TabsPart : public NativePart {
 public:
  TabsPart(const ViewNode& node, ViewContext& context);
  NSView* view() const override { return controller_.view; }
  NSViewController* controller() const override { return controller_; }
  void place(NativePart& child, const Place& place) override;
  void remove(NativePart& child) override;

 private:
  void show() override;
  NSTabViewController* controller_;
  std::vector<TabPart*> tabs_;  // in any order
};

}  // namespace kelvane
