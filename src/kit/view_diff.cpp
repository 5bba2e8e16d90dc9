#include "kit/view_diff.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <utility>

namespace kelvane {
namespace {

using Kind = ViewStep::Kind;
using Children = std::vector<ViewNode>;

ViewNode withoutChildren(ViewNode node) {
  node.children.clear();
  return node;
}

// For each new child the old one that stays for it: the longest run of matches in the old order.
std::vector<const ViewNode*> keptChildren(const Children& from, const Children& to) {
  std::map<std::string, std::size_t> oldPlaces;
  for (std::size_t i = 0; i < from.size(); ++i) oldPlaces.emplace(from[i].id, i);

  struct Match {
    std::size_t oldPlace;
    std::size_t newPlace;
    std::size_t length = 1;           // of the longest run that ends here
    const Match* previous = nullptr;  // in that run
  };
  std::vector<Match> matches;
  matches.reserve(to.size());
  const Match* last = nullptr;
  for (std::size_t i = 0; i < to.size(); ++i) {
    const auto found = oldPlaces.find(to[i].id);
    if (found == oldPlaces.end()) continue;
    Match match{found->second, i};
    for (const Match& earlier : matches) {
      if (earlier.oldPlace >= match.oldPlace || earlier.length < match.length) continue;
      match.length = earlier.length + 1;
      match.previous = &earlier;
    }
    matches.push_back(match);
    if (!last || match.length > last->length) last = &matches.back();
  }
  std::vector<const ViewNode*> kept(to.size(), nullptr);
  for (; last; last = last->previous) kept[last->newPlace] = &from[last->oldPlace];
  return kept;
}

void addDifferences(const ViewNode& from, const ViewNode& to, std::vector<ViewStep>& steps) {
  if (from.kind != to.kind || from.id != to.id) {
    steps.push_back({.kind = Kind::replace, .id = from.id, .node = to});
    return;
  }
  if (auto node = withoutChildren(to); withoutChildren(from) != node)
    steps.push_back({.kind = Kind::set, .id = to.id, .node = std::move(node)});

  const auto kept = keptChildren(from.children, to.children);
  for (const ViewNode& child : from.children)
    if (std::ranges::find(kept, &child) == kept.end())
      steps.push_back({.kind = Kind::remove, .id = child.id});
  for (std::size_t i = 0; i < kept.size(); ++i) {
    if (kept[i]) {
      addDifferences(*kept[i], to.children[i], steps);
    } else {
      steps.push_back({.kind = Kind::insert,
                       .parent = to.id,
                       .index = static_cast<int>(i),
                       .node = to.children[i]});
    }
  }
}

// The node of that id in or below `node`, and its parent; null when it isn't there.
struct Place {
  ViewNode* node = nullptr;
  ViewNode* parent = nullptr;
};
Place find(ViewNode& node, const std::string& id, ViewNode* parent = nullptr) {
  if (node.id == id) return {&node, parent};
  for (ViewNode& child : node.children)
    if (const Place place = find(child, id, &node); place.node) return place;
  return {};
}

// What is wrong with the step; absent when it was applied.
std::optional<std::string> apply(ViewNode& tree, const ViewStep& step) {
  const std::string& id = step.kind == Kind::insert ? step.parent : step.id;
  const auto [node, parent] = find(tree, id);
  if (!node) return "no node '" + id + "'";
  switch (step.kind) {
    case Kind::insert:
      if (step.index < 0 || std::cmp_greater(step.index, node->children.size()))
        return "no place " + std::to_string(step.index) + " in '" + id + "'";
      node->children.insert(node->children.begin() + step.index, step.node);
      return std::nullopt;
    case Kind::remove:
      if (!parent) return "the root '" + id + "' can't be removed";
      parent->children.erase(parent->children.begin() + (node - parent->children.data()));
      return std::nullopt;
    case Kind::replace:
      *node = step.node;
      return std::nullopt;
    case Kind::set: {
      if (step.node.kind != node->kind || step.node.id != id) return "'" + id + "' is another node";
      Children children = std::move(node->children);
      *node = step.node;
      node->children = std::move(children);
      return std::nullopt;
    }
  }
  return "a step of no known kind";
}

}  // namespace

std::vector<ViewStep> viewDifferences(const ViewNode& from, const ViewNode& to) {
  std::vector<ViewStep> steps;
  addDifferences(from, to, steps);
  return steps;
}

std::optional<std::string> applySteps(ViewNode& tree, const std::vector<ViewStep>& steps) {
  std::optional<std::string> firstProblem;
  for (const ViewStep& step : steps)
    if (auto problem = apply(tree, step); problem && !firstProblem)
      firstProblem = std::move(problem);
  return firstProblem;
}

}  // namespace kelvane
