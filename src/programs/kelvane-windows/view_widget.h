// One node of a view tree as widgets. Main thread; owned by the `ViewRenderer`.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <gtkmm/box.h>
#include <gtkmm/sizegroup.h>
#include <gtkmm/widget.h>
#include <gtkmm/window.h>

#include "platform/portable/view_part.h"
#include "platform/portable/view_part_tree.h"

namespace kelvane {

// What the widgets of one tree share; outlives them.
struct ViewContext {
  Gtk::Window& window;
  ViewPart::Acted acted;
  // The size group of that name, made when it is first asked for.
  std::function<Glib::RefPtr<Gtk::SizeGroup>(const std::string& name)> sizeGroup;
};

class ViewWidget : public ViewPart {
 public:
  using Place = ViewPlace<ViewWidget>;

  ViewWidget(const ViewNode& node, ViewContext& context)
      : ViewPart(node, context.acted), context_(context) {}

  // What stands among the widgets of its siblings; null for what has no place there.
  virtual Gtk::Widget* widget() = 0;

  virtual void place(ViewWidget&, const Place&) {}
  virtual void remove(ViewWidget&) {}

 protected:
  // Padding, width and help, common to all.
  void showFrame(Gtk::Widget& widget) const;

  ViewContext& context_;
};

// Puts the widget of a child into a box, where its row is.
void placeIn(Gtk::Box& box, ViewWidget& child, const ViewWidget::Place& place);

// Null for a kind that is not known.
std::unique_ptr<ViewWidget> makeViewWidget(const ViewNode& node, ViewContext& context);

}  // namespace kelvane
