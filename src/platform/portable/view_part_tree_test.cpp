#include "platform/portable/view_part_tree.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/portable/equal_widths.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;
using Kind = ViewNode::Kind;
using Step = ViewStep::Kind;

using Log = std::vector<std::string>;

ViewNode node(Kind kind, const std::string& id, std::vector<ViewNode> children = {}) {
  ViewNode made{.kind = kind, .id = id, .label = id, .action = id + "!"};
  made.children = std::move(children);
  return made;
}

// A toolkit that draws with letters.
class Part : public ViewPart {
 public:
  Part(const ViewNode& node, const Acted& acted, Log& log) : ViewPart(node, acted), log_(log) {
    show();
  }
  ~Part() override { log_.push_back("end of " + node().id); }
  void appear() override { log_.push_back(node().id); }
  void place(Part& child, const ViewPlace<Part>& place) {
    auto& row = rows_[place.row];
    EXPECT_EQ(place.previous, place.index > 0 ? row.at(place.index - 1) : nullptr);
    row.insert(row.begin() + static_cast<std::ptrdiff_t>(place.index), &child);
  }
  void remove(Part& child) {
    std::size_t removed = 0;
    for (auto& [row, children] : rows_) removed += std::erase(children, &child);
    EXPECT_EQ(removed, 1U) << child.node().id;
  }
  // "label(content)[buttons]"
  std::string drawn() const {
    std::string text = shown_;
    for (const auto& [row, children] : rows_) {
      if (children.empty()) continue;
      text += row == ViewRow::content ? "(" : "[";
      for (const Part* child : children) text += child->drawn();
      text += row == ViewRow::content ? ")" : "]";
    }
    return text;
  }

  using ViewPart::choose;
  using ViewPart::toggle;

 private:
  void show() override { shown_ = node().label; }
  Log& log_;
  std::string shown_;
  std::map<ViewRow, std::vector<Part*>> rows_;
};

struct Tree {
  explicit Tree(const ViewNode& node)
      : parts(node,
              [this](const ViewNode& each) { return std::make_unique<Part>(each, acted, log); }) {}
  std::string drawn() { return parts.root().drawn(); }

  Log log;
  ViewPart::Acted acted;
  ViewPartTree<Part> parts;
};

// A sheet stands among the lines of a form, with content and buttons mixed.
ViewNode form() {
  return node(Kind::form, "f",
              {node(Kind::text, "a"),
               node(Kind::sheet, "s",
                    {node(Kind::text, "x"), node(Kind::button, "1"), node(Kind::text, "y"),
                     node(Kind::button, "2")}),
               node(Kind::button, "b")});
}

TEST(ViewPartTree, EachStepPutsAPartInItsRow) {
  const struct {
    ViewStep step;
    std::string form, sheet;
  } rows[] = {
      {{.kind = Step::set, .id = "a", .node = {.id = "a", .label = "A"}}, "f(Ab)", "s(xy)[12]"},
      {{.kind = Step::insert, .parent = "f", .index = 2, .node = node(Kind::text, "c")},
       "f(acb)",
       "s(xy)[12]"},
      {{.kind = Step::insert, .parent = "f", .index = 3, .node = node(Kind::form, "g", {form()})},
       "f(abg(f(ab)))",
       "s(xy)[12]"},
      {{.kind = Step::insert, .parent = "s", .index = 2, .node = node(Kind::text, "z")},
       "f(ab)",
       "s(xzy)[12]"},
      {{.kind = Step::insert, .parent = "s", .index = 4, .node = node(Kind::text, "z")},
       "f(ab)",
       "s(xyz)[12]"},
      {{.kind = Step::insert, .parent = "s", .index = 3, .node = node(Kind::button, "3")},
       "f(ab)",
       "s(xy)[132]"},
      {{.kind = Step::insert, .parent = "s", .index = 0, .node = node(Kind::button, "3")},
       "f(ab)",
       "s(xy)[312]"},
      {{.kind = Step::insert, .parent = "f", .index = 0, .node = node(Kind::alert, "w")},
       "f(ab)",
       "s(xy)[12]"},
      {{.kind = Step::remove, .id = "1"}, "f(ab)", "s(xy)[2]"},
      {{.kind = Step::remove, .id = "a"}, "f(b)", "s(xy)[12]"},
      {{.kind = Step::replace, .id = "y", .node = node(Kind::button, "3")}, "f(ab)", "s(x)[132]"},
      {{.kind = Step::replace, .id = "a", .node = node(Kind::sheet, "t")}, "f(b)", "s(xy)[12]"},
  };
  for (const auto& [step, drawnForm, drawnSheet] : rows) {
    Tree tree(form());
    Part* sheet = nullptr;
    tree.parts.forEach([&](Part& part) {
      if (part.node().id == "s") sheet = &part;
    });
    EXPECT_THAT(tree.parts.apply({step}), IsEmpty());
    EXPECT_EQ(tree.drawn(), drawnForm);
    EXPECT_EQ(sheet->drawn(), drawnSheet);
  }
  Tree tabs(node(Kind::tabView, "v", {node(Kind::text, "a"), node(Kind::tab, "t")}));
  EXPECT_EQ(tabs.drawn(), "v(t)");
}

TEST(ViewPartTree, StepsThatDoNotFitAreLeftOutAndNamed) {
  const std::pair<ViewStep, std::string> rows[] = {
      {{.kind = Step::remove, .id = "q"}, "it names a node that is not there"},
      {{.kind = Step::insert, .parent = "q"}, "it names a node that is not there"},
      {{.kind = Step::insert, .parent = "f", .index = -1},
       "it inserts at a place that is not there"},
      {{.kind = Step::insert, .parent = "f", .index = 4},
       "it inserts at a place that is not there"},
      {{.kind = Step::set, .id = "a", .node = node(Kind::button, "a")},
       "a node can't change its kind"},
      {{.kind = Step::set, .id = "a", .node = node(Kind::text, "q")}, "a node can't change its id"},
      {{.kind = Step::remove, .id = "f"}, "the root can't be removed"},
      {{.kind = Step::replace, .id = "f"}, "the root can't be replaced"},
      {{.kind = static_cast<Step>(9), .id = "a"}, "it is of an unknown kind"},
  };
  for (const auto& [step, problem] : rows) {
    Tree tree(form());
    EXPECT_THAT(tree.parts.apply({step, {.kind = Step::remove, .id = "b"}}), ElementsAre(problem));
    EXPECT_EQ(tree.drawn(), "f(a)");
  }
  // What was below a part that is gone is gone too.
  Tree tree(form());
  EXPECT_THAT(
      tree.parts.apply({{.kind = Step::remove, .id = "s"}, {.kind = Step::remove, .id = "x"}}),
      ElementsAre("it names a node that is not there"));
}

TEST(ViewPartTree, PartsAppearAfterTheirChildrenAndGoBeforeThem) {
  Tree tree(node(Kind::form, "f", {node(Kind::form, "g", {node(Kind::text, "a")})}));
  const ViewStep insertion{.kind = Step::insert, .parent = "f", .index = 0};
  const auto insert = [&](const ViewNode& added) {
    ViewStep step = insertion;
    step.node = added;
    EXPECT_THAT(tree.parts.apply({step}), IsEmpty());
    return std::exchange(tree.log, {});
  };
  EXPECT_THAT(insert(node(Kind::sheet, "s")), IsEmpty()) << "the window is not shown yet";
  tree.parts.appear();
  EXPECT_THAT(std::exchange(tree.log, {}), ElementsAre("s", "a", "g", "f"));
  EXPECT_THAT(insert(node(Kind::alert, "w", {node(Kind::text, "b")})), ElementsAre("b", "w"));
  EXPECT_THAT(tree.parts.apply({{.kind = Step::replace, .id = "g", .node = node(Kind::text, "h")}}),
              IsEmpty());
  EXPECT_THAT(tree.log, ElementsAre("end of g", "end of a", "h"));
}

TEST(ViewPartTree, APartReportsWhatTheUserWantsAndGoesOnShowingWhatItsNodeSays) {
  ViewNode radio = node(Kind::radioGroup, "r");
  radio.options = {"one", "two"};
  radio.selection = 0;
  ViewNode on = node(Kind::toggle, "on");
  on.isOn = true;
  ViewNode mute = node(Kind::button, "mute");
  mute.action = "";
  const struct {
    ViewNode node;
    std::function<void(Part&)> act;
    Log reports;
  } rows[] = {
      {node(Kind::button, "b"), [](Part& part) { part.press(); }, {"b! b 0"}},
      {mute, [](Part& part) { part.press(); }, {}},
      {node(Kind::toggle, "off"), [](Part& part) { part.toggle(); }, {"off! off 1"}},
      {on, [](Part& part) { part.toggle(); }, {"on! on 0"}},
      {radio, [](Part& part) { part.choose(1); }, {"r! r 1"}},
      {radio, [](Part& part) { part.choose(0); }, {}},
      {radio, [](Part& part) { part.choose(2); }, {}},
      {radio, [](Part& part) { part.choose(-1); }, {}},
  };
  for (const auto& [each, act, reports] : rows) {
    auto tree = std::make_unique<Tree>(each);
    act(tree->parts.root());  // nobody hears it
    Log seen;
    tree->acted = [&](const std::string& action, const std::string& id, int value) {
      EXPECT_EQ(tree->parts.root().node(), each);
      tree.reset();  // and with it what holds the name of the action
      seen.push_back(action + " " + id + " " + std::to_string(value));
    };
    act(tree->parts.root());
    EXPECT_THAT(seen, ElementsAreArray(reports));
  }
}

TEST(EqualWidths, TheWidestLabelOfAGroupCounts) {
  EqualWidths widths;
  for (const double width : {20.0, 42.5, 30.0}) widths.add("labels", width);
  widths.add("others", 7);
  widths.add("", 99);
  EXPECT_EQ(widths.of("labels"), 42.5);
  EXPECT_EQ(widths.of("others"), 7.0);
  EXPECT_EQ(widths.of(""), std::nullopt);
}

}  // namespace
}  // namespace kelvane
