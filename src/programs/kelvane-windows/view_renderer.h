// Shows a view tree as widgets and follows its steps. It decides nothing. Main thread.
#pragma once

#include <map>
#include <string>
#include <vector>

#include <gtkmm/widget.h>

#include "platform/portable/view_part_tree.h"
#include "platform/view_tree.h"
#include "programs/kelvane-windows/view_widget.h"

namespace kelvane {

class ViewRenderer {
 public:
  // `window`, of which the tree's sheets and alerts are parts, outlives it.
  ViewRenderer(Gtk::Window& window, const ViewNode& tree, ViewPart::Acted acted);
  ViewRenderer(const ViewRenderer&) = delete;
  ViewRenderer& operator=(const ViewRenderer&) = delete;

  // Null when the tree is only a sheet or an alert.
  Gtk::Widget* widget() { return parts_.root().widget(); }
  // Shows sheets and alerts that are in the tree; called once the window itself is shown.
  void appear() { parts_.appear(); }
  // A step that does not fit the tree is left out, with a line on standard error.
  void apply(const std::vector<ViewStep>& steps);

 private:
  std::map<std::string, Glib::RefPtr<Gtk::SizeGroup>> sizeGroups_;
  ViewContext context_;
  ViewPartTree<ViewWidget> parts_;
};

}  // namespace kelvane
