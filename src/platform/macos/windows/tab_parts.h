// Tabs, as buttons in the window's tool bar. Main thread.
#pragma once

#include <vector>

#include "platform/macos/windows/view_part.h"

namespace kelvane {

class TabPart : public ViewPart {
 public:
  TabPart(const ViewNode& node, ViewContext& context);
  NSViewController* controller() const override { return controller_; }
  NSTabViewItem* item() const { return item_; }
  // Points; absent: by content.
  void setWidth(std::optional<double> width);
  void place(ViewPart& child, NSInteger index) override;
  void remove(ViewPart& child) override;

 private:
  void show() override;
  NSStackView* column_;
  NSLayoutConstraint* width_;
  NSViewController* controller_;
  NSTabViewItem* item_;
};

class TabsPart : public ViewPart {
 public:
  TabsPart(const ViewNode& node, ViewContext& context);
  NSViewController* controller() const override { return controller_; }
  void place(ViewPart& child, NSInteger index) override;
  void remove(ViewPart& child) override;

 private:
  void show() override;
  NSTabViewController* controller_;
  std::vector<TabPart*> tabs_;
};

}  // namespace kelvane
