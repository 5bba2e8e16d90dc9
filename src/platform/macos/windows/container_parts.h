// The nodes that only arrange others: stacks and forms. Main thread.
#pragma once

#include "platform/macos/windows/view_part.h"

namespace kelvane {

class StackPart : public ViewPart {
 public:
  StackPart(const ViewNode& node, ViewContext& context);
  void place(ViewPart& child, NSInteger index) override;
  void remove(ViewPart& child) override;

 private:
  void show() override;
  NSStackView* stack_;
};

// A column without a look of its own, for parts that have content.
NSStackView* makeColumn();

}  // namespace kelvane
