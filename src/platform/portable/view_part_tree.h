// The parts of a window's view tree: made from its nodes, put into each other, and changed in place
// by steps, so that the focus stays where it is. Main thread.
//
// `Part` is a toolkit's own kind of `ViewPart`. Those that have children have besides
//   void place(Part& child, const ViewPlace<Part>& place);  puts its view among those in its row
//   void remove(Part& child);  takes away the view of a child that was placed
#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "platform/portable/view_part.h"

namespace kelvane {

template <typename Part>
struct ViewPlace {
  ViewRow row = ViewRow::content;
  std::size_t index = 0;     // how many stand before it in that row
  Part* previous = nullptr;  // the last of these
};

template <typename Part>
class ViewPartTree {
 public:
  // Never null.
  using Make = std::function<std::unique_ptr<Part>(const ViewNode&)>;

  ViewPartTree(const ViewNode& tree, Make make) : make_(std::move(make)) {
    root_ = build(tree, nullptr);
  }

  Part& root() { return *root_->part; }

  // Shows sheets and alerts that are in the tree; called once the window itself is shown. Those
  // that steps bring later are shown at once.
  void appear() {
    isShown_ = true;
    appear(*root_);
  }

  // A step that does not fit the tree is left out; says of each of these what is wrong with it. The
  // root can be set, but neither removed nor replaced.
  [[nodiscard]] std::vector<std::string> apply(const std::vector<ViewStep>& steps) {
    std::vector<std::string> problems;
    for (const ViewStep& step : steps)
      if (const char* problem = applyOne(step)) problems.emplace_back(problem);
    return problems;
  }

  // In the tree's order, a part before its children.
  void forEach(const std::function<void(Part&)>& use) { forEach(*root_, use); }

 private:
  struct Item {
    Item* parent = nullptr;
    std::vector<std::unique_ptr<Item>> children;
    // Goes before the children, as a container lets go of their views before they do.
    std::unique_ptr<Part> part;
  };

  static ViewNode::Kind kindOf(const Item& item) { return item.part->node().kind; }
  static ViewRow rowOf(const Item& item) { return viewRow(kindOf(*item.parent), kindOf(item)); }

  std::unique_ptr<Item> build(const ViewNode& node, Item* parent) {
    auto item = std::make_unique<Item>();
    item->parent = parent;
    item->part = make_(node);
    items_.emplace(node.id, item.get());
    for (const ViewNode& child : node.children) {
      item->children.push_back(build(child, item.get()));
      place(*item->children.back());
    }
    return item;
  }

  void place(Item& item) {
    ViewPlace<Part> place{.row = rowOf(item)};
    if (place.row == ViewRow::none) return;
    for (const auto& sibling : item.parent->children) {
      if (sibling.get() == &item) break;
      if (rowOf(*sibling) != place.row) continue;
      ++place.index;
      place.previous = sibling->part.get();
    }
    item.parent->part->place(*item.part, place);
  }

  void appear(Item& item) {
    for (const auto& child : item.children) appear(*child);
    item.part->appear();
  }

  void forEach(Item& item, const std::function<void(Part&)>& use) {
    use(*item.part);
    for (const auto& child : item.children) forEach(*child, use);
  }

  // What is wrong with the step; null when it was applied.
  const char* applyOne(const ViewStep& step) {
    const auto found = items_.find(step.kind == ViewStep::Kind::insert ? step.parent : step.id);
    if (found == items_.end()) return "it names a node that is not there";
    Item& item = *found->second;
    switch (step.kind) {
      case ViewStep::Kind::set:
        if (kindOf(item) != step.node.kind) return "a node can't change its kind";
        if (item.part->node().id != step.node.id) return "a node can't change its id";
        item.part->set(step.node);
        return nullptr;
      case ViewStep::Kind::insert:
        if (step.index < 0 || std::cmp_greater(step.index, item.children.size()))
          return "it inserts at a place that is not there";
        insert(item, static_cast<std::size_t>(step.index), step.node);
        return nullptr;
      case ViewStep::Kind::remove:
        if (!item.parent) return "the root can't be removed";
        remove(item);
        return nullptr;
      case ViewStep::Kind::replace: {
        Item* parent = item.parent;
        if (!parent) return "the root can't be replaced";
        insert(*parent, remove(item), step.node);
        return nullptr;
      }
    }
    return "it is of an unknown kind";
  }

  void insert(Item& parent, std::size_t index, const ViewNode& node) {
    auto item = build(node, &parent);
    Item& added = *item;
    parent.children.insert(parent.children.begin() + static_cast<std::ptrdiff_t>(index),
                           std::move(item));
    place(added);
    if (isShown_) appear(added);
  }

  // Gives the index it had in its parent.
  std::size_t remove(Item& item) {
    auto& siblings = item.parent->children;
    const auto at = std::find_if(siblings.begin(), siblings.end(),
                                 [&](const auto& each) { return each.get() == &item; });
    const auto index = static_cast<std::size_t>(at - siblings.begin());
    forget(item);
    if (rowOf(item) != ViewRow::none) item.parent->part->remove(*item.part);
    siblings.erase(at);
    return index;
  }

  void forget(const Item& item) {
    for (const auto& child : item.children) forget(*child);
    // Of two with one id the first is known.
    const auto found = items_.find(item.part->node().id);
    if (found != items_.end() && found->second == &item) items_.erase(found);
  }

  const Make make_;
  std::unordered_map<std::string, Item*> items_;
  bool isShown_ = false;
  std::unique_ptr<Item> root_;
};

}  // namespace kelvane
