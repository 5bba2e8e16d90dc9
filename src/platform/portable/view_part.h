// What one node of a view tree shows, whichever toolkit shows it, and where it stands. Main thread.
//
// It shows what its node says and reports what the user does, but what it shows then stays as it is
// until the node is set anew.
#pragma once

#include <functional>
#include <string>

#include "platform/view_tree.h"

namespace kelvane {

class ViewPart {
 public:
  // As in `ViewWindowEvents`.
  using Acted = std::function<void(const std::string& action, const std::string& id, int value)>;

  // `acted` outlives this.
  ViewPart(const ViewNode& node, const Acted& acted);
  virtual ~ViewPart() = default;
  ViewPart(const ViewPart&) = delete;
  ViewPart& operator=(const ViewPart&) = delete;

  // The node as it is shown, without its children.
  const ViewNode& node() const { return node_; }
  // Takes another node of the same kind.
  void set(const ViewNode& node);

  // Shows what is a window of its own, once its children are in.
  virtual void appear() {}

  // The user pressed a button, or ended a sheet or an alert other than by one of its buttons. After
  // this and the next two this may be gone.
  void press() const { report(0); }

 protected:
  // Shows what the node says now; called by `set`, and by constructors for the first time.
  virtual void show() = 0;
  // The user wants a toggle to be what it is not.
  void toggle() const { report(node_.isOn.value_or(false) ? 0 : 1); }
  // The user wants this option; nothing when it is the chosen one, or none at all.
  void choose(int index) const;

 private:
  void report(int value) const;

  ViewNode node_;
  const Acted& acted_;
};

// In which row of its parent the view of a node stands.
enum class ViewRow {
  none,     // it has no place there: it stands over the window, or its parent can't show it
  content,  // beside or below each other, as the parent says
  buttons,  // at the lower edge of a sheet or an alert
};
ViewRow viewRow(ViewNode::Kind parent, ViewNode::Kind child);

}  // namespace kelvane
