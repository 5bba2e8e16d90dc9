// Children in a row or a column: stacks and forms. Main thread.
#pragma once

#include <vector>

#include <gtkmm/box.h>

#include "programs/kelvane-windows/view_widget.h"

namespace kelvane {

// A stack; a form is a vertical one.
class StackView : public ViewWidget {
 public:
  StackView(const ViewNode& node, ViewContext& context);
  Gtk::Widget* widget() override { return &frame_; }
  void place(ViewWidget& child, const Place& place) override;
  void remove(ViewWidget& child) override;

 private:
  void show() override;
  void align(ViewWidget& child);
  Gtk::Box box_;
  Gtk::Box frame_;  // a row that is narrower than the stack is in the middle of it
  std::vector<ViewWidget*> children_;  // in any order
};

}  // namespace kelvane
