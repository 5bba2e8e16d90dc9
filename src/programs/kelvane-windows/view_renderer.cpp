#include "programs/kelvane-windows/view_renderer.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <utility>

namespace kelvane {

struct ViewRenderer::Item {
  Item* parent = nullptr;
  std::vector<std::unique_ptr<Item>> children;
  // After the children, as a container lets go of their widgets before they go.
  std::unique_ptr<ViewWidget> view;
};

ViewRenderer::ViewRenderer(Gtk::Window& window, const ViewNode& tree, Acted acted)
    : context_{window, std::move(acted), [this](const std::string& name) {
                 auto& group = sizeGroups_[name];
                 if (!group) group = Gtk::SizeGroup::create(Gtk::SizeGroup::Mode::HORIZONTAL);
                 return group;
               }} {
  root_ = make(tree, nullptr);
}

ViewRenderer::~ViewRenderer() = default;

Gtk::Widget* ViewRenderer::widget() { return root_->view->widget(); }

void ViewRenderer::appear() {
  isShown_ = true;
  appear(*root_);
}

void ViewRenderer::appear(Item& item) {
  for (const auto& child : item.children) appear(*child);
  item.view->appear();
}

std::unique_ptr<ViewRenderer::Item> ViewRenderer::make(const ViewNode& node, Item* parent) {
  auto item = std::make_unique<Item>();
  item->parent = parent;
  item->view = makeViewWidget(node, context_);
  items_.emplace(node.id, item.get());
  for (const ViewNode& child : node.children) {
    item->children.push_back(make(child, item.get()));
    place(*item->children.back());
  }
  return item;
}

void ViewRenderer::place(Item& item) {
  if (!item.view->widget()) return;
  ViewWidget* previous = nullptr;
  for (const auto& sibling : item.parent->children) {
    if (sibling.get() == &item) break;
    if (sibling->view->widget()) previous = sibling->view.get();
  }
  item.parent->view->place(*item.view, previous);
}

void ViewRenderer::forget(const Item& item) {
  for (const auto& child : item.children) forget(*child);
  const auto found = items_.find(item.view->node().id);
  if (found != items_.end() && found->second == &item) items_.erase(found);
}

ViewRenderer::Item* ViewRenderer::find(const std::string& id) const {
  const auto found = items_.find(id);
  return found == items_.end() ? nullptr : found->second;
}

void ViewRenderer::apply(const std::vector<ViewStep>& steps) {
  for (const ViewStep& step : steps)
    if (const char* wrong = applyOne(step); *wrong)
      std::fprintf(stderr, "kelvane-windows: left out a change: %s\n", wrong);
}

const char* ViewRenderer::applyOne(const ViewStep& step) {
  Item* item = find(step.kind == ViewStep::Kind::insert ? step.parent : step.id);
  if (!item) return "it names a node that is not there";
  switch (step.kind) {
    case ViewStep::Kind::set:
      if (item->view->node().kind != step.node.kind) return "a node can't change its kind";
      if (item->view->node().id != step.node.id) return "a node can't change its id";
      item->view->set(step.node);
      return "";
    case ViewStep::Kind::insert:
      if (step.index < 0 || static_cast<std::size_t>(step.index) > item->children.size())
        return "it inserts at a place that is not there";
      insert(*item, static_cast<std::size_t>(step.index), step.node);
      return "";
    case ViewStep::Kind::remove:
      if (!item->parent) return "the root can't be removed";
      remove(*item);
      return "";
    case ViewStep::Kind::replace: {
      Item* parent = item->parent;
      if (!parent) return "the root can't be replaced";
      insert(*parent, remove(*item), step.node);
      return "";
    }
  }
  return "it is of an unknown kind";
}

void ViewRenderer::insert(Item& parent, std::size_t index, const ViewNode& node) {
  auto item = make(node, &parent);
  Item& added = *item;
  parent.children.insert(parent.children.begin() + static_cast<std::ptrdiff_t>(index),
                         std::move(item));
  place(added);
  if (isShown_) appear(added);
}

std::size_t ViewRenderer::remove(Item& item) {
  auto& siblings = item.parent->children;
  const auto at = std::find_if(siblings.begin(), siblings.end(),
                               [&](const auto& each) { return each.get() == &item; });
  const auto index = static_cast<std::size_t>(at - siblings.begin());
  forget(item);
  if (item.view->widget()) item.parent->view->remove(*item.view);
  siblings.erase(at);
  return index;
}

}  // namespace kelvane
