// One node of a view tree as AppKit's views. Main thread; owned by the `ViewRenderer`.
#pragma once

#include <functional>
#include <memory>

#import <AppKit/AppKit.h>

#include "platform/portable/view_part.h"
#include "platform/portable/view_part_tree.h"

namespace kelvane {

// What the parts of one tree share; outlives them.
struct ViewContext {
  NSWindow* window = nil;  // of which sheets and alerts are parts
  ViewPart::Acted acted;
};

class NativePart : public ViewPart {
 public:
  using Place = ViewPlace<NativePart>;

  NativePart(const ViewNode& node, ViewContext& context)
      : ViewPart(node, context.acted), context_(context) {}

  // What stands among the views of its siblings; nil for what has no place there.
  virtual NSView* view() const { return frame_; }
  // The controller of the view where it has one of its own; else nil.
  virtual NSViewController* controller() const { return nil; }

  virtual void place(NativePart&, const Place&) {}
  virtual void remove(NativePart&) {}

  // The width that the label of an equal-width group needs, and the one it gets.
  virtual double labelWidth() const { return 0; }
  virtual void setLabelWidth(double) {}

 protected:
  // Puts `inner` into a frame with the node's padding, width and help.
  void wrap(NSView* inner);
  void showFrame();

  ViewContext& context_;

 private:
  NSView* frame_ = nil;
  NSLayoutConstraint* leading_ = nil;
  NSLayoutConstraint* trailing_ = nil;
  NSLayoutConstraint* top_ = nil;
  NSLayoutConstraint* bottom_ = nil;
  NSLayoutConstraint* width_ = nil;
};

std::unique_ptr<NativePart> makeNativePart(const ViewNode& node, ViewContext& context);

}  // namespace kelvane

// Takes the clicks of controls, which hold it weakly.
@interface KelvaneControlTarget : NSObject
- (instancetype)initWithAction:(std::function<void(NSInteger tag)>)action;
- (void)act:(NSControl*)sender;
@end
