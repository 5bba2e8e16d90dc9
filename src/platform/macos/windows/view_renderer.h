// Shows a view tree as AppKit's views and follows its steps. It decides nothing. Main thread.
#pragma once

#include <vector>

#include "platform/macos/windows/native_part.h"
#include "platform/portable/view_part_tree.h"

namespace kelvane {

class ViewRenderer {
 public:
  // The context's window may be given later, but before `appear`; the context outlives this.
  ViewRenderer(const ViewNode& tree, ViewContext& context);
  ViewRenderer(const ViewRenderer&) = delete;
  ViewRenderer& operator=(const ViewRenderer&) = delete;

  // Of the root; made for it where it has none of its own.
  NSViewController* controller() const { return controller_; }
  // Shows sheets and alerts that are in the tree; called once the window itself is shown.
  void appear() { parts_.appear(); }
  // A step that does not fit the tree is left out, with a line on standard error.
  void apply(const std::vector<ViewStep>& steps);

 private:
  // Makes the labels of each group equally wide, and the window as large as its content.
  void layOut();

  ViewPartTree<NativePart> parts_;
  NSViewController* controller_;
};

}  // namespace kelvane
