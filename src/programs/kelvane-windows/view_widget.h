// One node of a view tree as widgets. Main thread; owned by the `ViewRenderer`, which puts them
// into each other as the tree says.
//
// It shows what its node says and reports what the user does, but what it shows then stays as it is
// until the node is set anew.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <gtkmm/sizegroup.h>
#include <gtkmm/widget.h>
#include <gtkmm/window.h>

#include "platform/view_tree.h"

namespace kelvane {

// What the widgets of one tree share; outlives them.
struct ViewContext {
  Gtk::Window& window;
  std::function<void(const std::string& action, const std::string& id, int value)> acted;
  // The size group of that name, made when it is first asked for.
  std::function<Glib::RefPtr<Gtk::SizeGroup>(const std::string& name)> sizeGroup;
};

class ViewWidget {
 public:
  ViewWidget(const ViewNode& node, ViewContext& context);
  virtual ~ViewWidget() = default;
  ViewWidget(const ViewWidget&) = delete;
  ViewWidget& operator=(const ViewWidget&) = delete;

  // The node as it is shown, without its children.
  const ViewNode& node() const { return node_; }
  // Takes another node of the same kind.
  void set(const ViewNode& node);

  // What stands among the widgets of its siblings; null: it takes no room there.
  virtual Gtk::Widget* widget() = 0;
  // Shows what is a window of its own, once its children are in.
  virtual void appear() {}

  // Children that have a widget: put after `previous`, another child, or first when that is null.
  virtual void place(ViewWidget&, ViewWidget* /*previous*/) {}
  virtual void remove(ViewWidget&) {}

 protected:
  // Shows what the node says now; called by `set`, and by constructors for the first time.
  virtual void show() = 0;
  // Reports the node's action, if it has one.
  void act(int value);
  // Padding, width and help, common to all.
  void showFrame(Gtk::Widget& widget) const;

  ViewContext& context_;

 private:
  ViewNode node_;
};

// Null for a kind that is not known.
std::unique_ptr<ViewWidget> makeViewWidget(const ViewNode& node, ViewContext& context);

}  // namespace kelvane
