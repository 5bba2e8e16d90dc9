// The nodes that only arrange others: stacks and forms. Main thread.
#pragma once

#include "platform/macos/windows/native_part.h"

namespace kelvane {

class StackPart : public NativePart {
 public:
  StackPart(const ViewNode& node, ViewContext& context);
  void place(NativePart& child, const Place& place) override;
  void remove(NativePart& child) override;

 private:
  void show() override;
  NSStackView* stack_;
};

// A column without a look of its own, for parts that have content.
NSStackView* makeColumn();

}  // namespace kelvane
