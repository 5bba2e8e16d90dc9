#include "platform/macos/windows/view_renderer.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <map>
#include <utility>

namespace kelvane {

struct ViewRenderer::Item {
  Item* parent = nullptr;
  std::vector<std::unique_ptr<Item>> children;
  // After the children, as a container lets go of their views before they go.
  std::unique_ptr<ViewPart> part;
};

ViewRenderer::ViewRenderer(const ViewNode& tree, ViewContext& context)
    : context_(context), root_(make(tree, nullptr)), controller_(root_->part->controller()) {
  if (!controller_) {
    controller_ = [[NSViewController alloc] init];
    NSView* view = root_->part->view();
    controller_.view = view ? view : [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 0, 0)];
  }
  layOut();
}

ViewRenderer::~ViewRenderer() = default;

void ViewRenderer::appear() {
  isShown_ = true;
  appear(*root_);
}

void ViewRenderer::appear(Item& item) {
  for (const auto& child : item.children) appear(*child);
  item.part->appear();
}

std::unique_ptr<ViewRenderer::Item> ViewRenderer::make(const ViewNode& node, Item* parent) {
  auto item = std::make_unique<Item>();
  item->parent = parent;
  item->part = makeViewPart(node, context_);
  items_.emplace(node.id, item.get());
  for (const ViewNode& child : node.children) {
    item->children.push_back(make(child, item.get()));
    place(*item->children.back());
  }
  return item;
}

void ViewRenderer::place(Item& item) {
  if (!item.part->view()) return;
  NSInteger index = 0;
  for (const auto& sibling : item.parent->children) {
    if (sibling.get() == &item) break;
    if (sibling->part->view()) ++index;
  }
  item.parent->part->place(*item.part, index);
}

void ViewRenderer::forget(const Item& item) {
  for (const auto& child : item.children) forget(*child);
  const auto found = items_.find(item.part->node().id);
  if (found != items_.end() && found->second == &item) items_.erase(found);
}

ViewRenderer::Item* ViewRenderer::find(const std::string& id) const {
  const auto found = items_.find(id);
  return found == items_.end() ? nullptr : found->second;
}

void ViewRenderer::apply(const std::vector<ViewStep>& steps) {
  for (const ViewStep& step : steps)
    if (const char* wrong = applyOne(step); *wrong)
      std::fprintf(stderr, "kelvane: left out a change of a window: %s\n", wrong);
  layOut();
}

const char* ViewRenderer::applyOne(const ViewStep& step) {
  Item* item = find(step.kind == ViewStep::Kind::insert ? step.parent : step.id);
  if (!item) return "it names a node that is not there";
  switch (step.kind) {
    case ViewStep::Kind::set:
      if (item->part->node().kind != step.node.kind) return "a node can't change its kind";
      if (item->part->node().id != step.node.id) return "a node can't change its id";
      item->part->set(step.node);
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
  item.parent->part->remove(*item.part);
  siblings.erase(at);
  return index;
}

void ViewRenderer::layOut() {
  std::map<std::string, double> widths;
  for (const auto& [id, item] : items_)
    if (const auto width = item->part->labelWidth()) {
      double& widest = widths[item->part->node().equalWidthGroup];
      widest = std::max(widest, *width);
    }
  for (const auto& [id, item] : items_)
    if (const auto found = widths.find(item->part->node().equalWidthGroup); found != widths.end())
      item->part->setLabelWidth(found->second);
  // A window follows what its controllers prefer.
  for (const auto& [id, item] : items_)
    if (item->part->node().kind == ViewNode::Kind::tab) {
      NSViewController* tab = item->part->controller();
      tab.preferredContentSize = tab.view.fittingSize;
    }
}

}  // namespace kelvane
