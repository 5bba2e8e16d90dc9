// The nodes that are shown over the window: sheets and alerts. Main thread.
#pragma once

#include <memory>
#include <vector>

#include "platform/macos/windows/native_part.h"

namespace kelvane {

class SheetPart : public NativePart {
 public:
  SheetPart(const ViewNode& node, ViewContext& context);
  ~SheetPart() override;
  void appear() override;
  void place(NativePart& child, const Place& place) override;
  void remove(NativePart& child) override;

 private:
  void show() override {}
  KelvaneControlTarget* cancelled_;
  NSWindow* sheet_;
  NSStackView* content_;
  NSStackView* buttons_;
};

// Made by the system from the texts and buttons among the children; it closes at a click, before
// the tree says so.
class AlertPart : public NativePart {
 public:
  AlertPart(const ViewNode& node, ViewContext& context);
  ~AlertPart() override;
  void appear() override;
  void place(NativePart& child, const Place& place) override;
  void remove(NativePart& child) override;

 private:
  void show() override;
  void ended(NSModalResponse response);
  std::vector<NativePart*> texts_;
  std::vector<NativePart*> buttons_;
  NSAlert* alert_ = nil;
  // Gone with this; the system may answer later.
  std::shared_ptr<AlertPart*> self_;
};

}  // namespace kelvane
