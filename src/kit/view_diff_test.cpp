#include "kit/view_diff.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvane {
namespace {

using ::testing::ElementsAreArray;

// A node from a letter: "a" and "A" are the same place, of another kind.
ViewNode node(const std::string& id, std::vector<ViewNode> children = {}, std::string label = "") {
  ViewNode made;
  made.kind = std::isupper(id.back()) ? ViewNode::Kind::button : ViewNode::Kind::verticalStack;
  std::ranges::transform(id, std::back_inserter(made.id),
                         [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  made.label = std::move(label);
  made.children = std::move(children);
  return made;
}
ViewNode list(const std::string& letters) {
  ViewNode made = node("root");
  for (const char letter : letters) made.children.push_back(node({letter}));
  return made;
}

std::vector<std::string> told(const std::vector<ViewStep>& steps) {
  std::vector<std::string> texts;
  for (const ViewStep& step : steps) switch (step.kind) {
      case ViewStep::Kind::insert:
        texts.push_back("insert " + step.node.id + " in " + step.parent + " at " +
                        std::to_string(step.index));
        break;
      case ViewStep::Kind::remove:
        texts.push_back("remove " + step.id);
        break;
      case ViewStep::Kind::replace:
        texts.push_back("replace " + step.id);
        break;
      case ViewStep::Kind::set:
        EXPECT_TRUE(step.node.children.empty());
        texts.push_back("set " + step.id);
        break;
    }
  return texts;
}

TEST(ViewDiff, TakesTheFewestSteps) {
  const struct {
    ViewNode from, to;
    std::vector<std::string> steps;
  } rows[] = {
      {list("abc"), list("abc"), {}},
      {list("abc"), list("ac"), {"remove b"}},
      {list("ac"), list("abc"), {"insert b in root at 1"}},
      {list("abcd"), list("bcda"), {"remove a", "insert a in root at 3"}},
      {list("abcd"), list("dabc"), {"remove d", "insert d in root at 0"}},
      {list("s"), list("lt"), {"remove s", "insert l in root at 0", "insert t in root at 1"}},
      {list("abc"), list("aBc"), {"replace b"}},
      {node("a"), node("b"), {"replace a"}},
      {node("r", {node("a", {node("x")})}), node("r", {node("a", {node("x")}, "new")}), {"set a"}},
      {node("r", {node("a", {node("x")})}, "old"),
       node("r", {node("a", {node("y")})}, "new"),
       {"set r", "remove x", "insert y in a at 0"}},
  };
  for (const auto& [from, to, steps] : rows)
    EXPECT_THAT(told(viewDifferences(from, to)), ElementsAreArray(steps));
  // Two of five have to move, whichever they are.
  EXPECT_EQ(viewDifferences(list("abcde"), list("badce")).size(), 4U);
}

TEST(ViewDiff, StepsTurnAnyTreeIntoAnyOther) {
  std::mt19937 random(20260314);
  const auto below = [&](int n) { return std::uniform_int_distribution(0, n - 1)(random); };
  const auto make = [&](const auto& self, const std::string& id, int depth) -> ViewNode {
    ViewNode made = node(id, {}, std::string(static_cast<std::size_t>(below(2)), 'x'));
    made.kind = below(8) ? ViewNode::Kind::form : ViewNode::Kind::tab;
    if (below(3) == 0) made.isOn = below(2) == 0;
    std::string letters = "abcdef";
    std::ranges::shuffle(letters, random);
    for (int i = depth > 0 ? below(6) : 0; i > 0; --i)
      made.children.push_back(
          self(self, id + "/" + letters[static_cast<std::size_t>(i)], depth - 1));
    return made;
  };
  for (int i = 0; i < 300; ++i) {
    const ViewNode from = make(make, "r", 3);
    const ViewNode to = make(make, "r", 3);
    ViewNode tree = from;
    EXPECT_EQ(applySteps(tree, viewDifferences(from, to)), std::nullopt);
    ASSERT_EQ(tree, to) << "tree " << i;
    ASSERT_TRUE(viewDifferences(to, tree).empty());
  }
}

TEST(ViewDiff, StepsThatCannotBeDoneAreLeftOutAndNamed) {
  using Kind = ViewStep::Kind;
  const std::pair<ViewStep, std::string> rows[] = {
      {{.kind = Kind::remove, .id = "z"}, "no node 'z'"},
      {{.kind = Kind::remove, .id = "root"}, "the root 'root' can't be removed"},
      {{.kind = Kind::set, .id = "z", .node = node("z")}, "no node 'z'"},
      {{.kind = Kind::set, .id = "a", .node = node("b")}, "'a' is another node"},
      {{.kind = Kind::set, .id = "a", .node = node("A")}, "'a' is another node"},
      {{.kind = Kind::replace, .id = "", .node = node("b")}, "no node ''"},
      {{.kind = Kind::insert, .parent = "z", .node = node("b")}, "no node 'z'"},
      {{.kind = Kind::insert, .parent = "root", .index = 3, .node = node("c")},
       "no place 3 in 'root'"},
      {{.kind = Kind::insert, .parent = "root", .index = -1, .node = node("c")},
       "no place -1 in 'root'"},
      {{.kind = static_cast<Kind>(9), .id = "a"}, "a step of no known kind"},
  };
  for (const auto& [step, problem] : rows) {
    ViewNode tree = list("ab");
    const ViewStep removal{.kind = Kind::remove, .id = "b"};
    EXPECT_EQ(applySteps(tree, {step, removal, removal}), problem);
    EXPECT_EQ(tree, list("a"));
  }
}

}  // namespace
}  // namespace kelvane
