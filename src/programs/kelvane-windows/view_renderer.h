// Shows a view tree as widgets and follows its steps in place, so that the focus stays where it is.
// It decides nothing. Main thread.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include <gtkmm/widget.h>

#include "platform/view_tree.h"
#include "programs/kelvane-windows/view_widget.h"

namespace kelvane {

class ViewRenderer {
 public:
  using Acted = std::function<void(const std::string& action, const std::string& id, int value)>;

  // `window`, of which the tree's sheets and alerts are parts, outlives it.
  ViewRenderer(Gtk::Window& window, const ViewNode& tree, Acted acted);
  ~ViewRenderer();
  ViewRenderer(const ViewRenderer&) = delete;
  ViewRenderer& operator=(const ViewRenderer&) = delete;

  // Null when the tree is only a sheet or an alert.
  Gtk::Widget* widget();
  // Shows sheets and alerts that are in the tree; called once the window itself is shown.
  void appear();
  // A step that does not fit the tree is left out, with a line on standard error. The root can be
  // set, but neither removed nor replaced.
  void apply(const std::vector<ViewStep>& steps);

 private:
  struct Item;

  std::unique_ptr<Item> make(const ViewNode& node, Item* parent);
  void place(Item& item);
  void forget(const Item& item);
  void appear(Item& item);
  Item* find(const std::string& id) const;
  // What is wrong with the step; empty when it was applied.
  const char* applyOne(const ViewStep& step);
  void insert(Item& parent, std::size_t index, const ViewNode& node);
  // Gives the index it had in its parent.
  std::size_t remove(Item& item);

  std::map<std::string, Glib::RefPtr<Gtk::SizeGroup>> sizeGroups_;
  ViewContext context_;
  std::unordered_map<std::string, Item*> items_;
  bool isShown_ = false;
  std::unique_ptr<Item> root_;
};

}  // namespace kelvane
