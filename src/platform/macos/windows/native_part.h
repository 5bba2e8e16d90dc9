// One node of a view tree as AppKit's views. Main thread; owned by the `ViewRenderer`, which puts
// them into each other as the tree says.
//
// It shows what its node says and reports what the user does, but what it shows then stays as it is
// until the node is set anew.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#import <AppKit/AppKit.h>

#include "platform/view_tree.h"

namespace kelvane {

// What the parts of one tree share; outlives them.
struct ViewContext {
  NSWindow* window = nil;  // of which sheets and alerts are parts
  std::function<void(const std::string& action, const std::string& id, int value)> acted;
};

class ViewPart {
 public:
  ViewPart(const ViewNode& node, ViewContext& context);
  virtual ~ViewPart() = default;
  ViewPart(const ViewPart&) = delete;
  ViewPart& operator=(const ViewPart&) = delete;

  // The node as it is shown, without its children.
  const ViewNode& node() const { return node_; }
  // Takes another node of the same kind.
  void set(const ViewNode& node);

  // What stands among the views of its siblings; nil: it takes no room there.
  NSView* view() const { return frame_; }
  // The controller of the view where it has one of its own; else nil.
  virtual NSViewController* controller() const { return nil; }
  // Shows what is a window of its own, once its children are in.
  virtual void appear() {}

  // Children: `index` counts those before it that have a view.
  virtual void place(ViewPart&, NSInteger /*index*/) {}
  virtual void remove(ViewPart&) {}

  // The width that the label of an equal-width group needs, and the one it gets.
  virtual std::optional<double> labelWidth() const { return std::nullopt; }
  virtual void setLabelWidth(double) {}

 protected:
  // Shows what the node says now; called by `set`, and by constructors for the first time.
  virtual void show() = 0;
  // Reports the node's action, if it has one. The part may be gone afterwards.
  void act(int value) const;
  // Puts `inner` into a frame with the node's padding, width and help.
  void wrap(NSView* inner);
  void showFrame();

  ViewContext& context_;

 private:
  ViewNode node_;
  NSView* frame_ = nil;
  NSLayoutConstraint* leading_ = nil;
  NSLayoutConstraint* trailing_ = nil;
  NSLayoutConstraint* top_ = nil;
  NSLayoutConstraint* bottom_ = nil;
  NSLayoutConstraint* width_ = nil;
};

// Null for a kind that is not known.
std::unique_ptr<ViewPart> makeViewPart(const ViewNode& node, ViewContext& context);

}  // namespace kelvane

// Takes the clicks of controls, which hold it weakly.
@interface KelvaneControlTarget : NSObject
- (instancetype)initWithAction:(std::function<void(NSInteger tag)>)action;
- (void)act:(NSControl*)sender;
@end
