// Shows a view tree as AppKit's views and follows its steps in place, so that the focus stays where
// it is. It decides nothing. Main thread.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/macos/windows/view_part.h"

namespace kelvane {

class ViewRenderer {
 public:
  // The context's window may be given later, but before `appear`; the context outlives this.
  ViewRenderer(const ViewNode& tree, ViewContext& context);
  ~ViewRenderer();
  ViewRenderer(const ViewRenderer&) = delete;
  ViewRenderer& operator=(const ViewRenderer&) = delete;

  // Of the root; made for it where it has none of its own.
  NSViewController* controller() const { return controller_; }
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
  // Makes the labels of each group equally wide, and the window as large as its content.
  void layOut();

  ViewContext& context_;
  std::unordered_map<std::string, Item*> items_;
  bool isShown_ = false;
  std::unique_ptr<Item> root_;
  NSViewController* controller_;
};

}  // namespace kelvane
