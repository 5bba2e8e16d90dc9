#include "platform/macos/windows/tree_window.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <doubles/doubles.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Kind = ViewNode::Kind;
using Step = ViewStep::Kind;

class TreeWindowTest : public ::testing::Test {
 protected:
  void open(std::vector<ViewNode> children) {
    window = openTreeWindow(
        "Settings", {.kind = Kind::verticalStack, .id = "root", .children = std::move(children)},
        // A reaction may destroy the window, and these closures with it.
        {.acted =
             [this, own = std::make_shared<std::string>(" ")](const std::string& action,
                                                              const std::string& id, int value) {
               if (reaction) std::exchange(reaction, nullptr)();
               seen.push_back(action + *own + id + *own + std::to_string(value));
             },
         .closed =
             [this, own = std::make_shared<std::string>("closed")] {
               if (reaction) std::exchange(reaction, nullptr)();
               seen.push_back(*own);
             }});
  }
  NSWindow* native() { return doubles::application().front; }
  // The controls of the root, out of the frames that they are in.
  NSArray<NSView*>* controls() {
    NSMutableArray* found = [NSMutableArray arrayWithCapacity:0];
    NSStackView* root = (NSStackView*)native().contentView.subviews.firstObject;
    for (NSView* frame in root.arrangedSubviews) [found addObject:frame.subviews.firstObject];
    return found;
  }
  NSButton* button(NSUInteger index) { return (NSButton*)controls()[index]; }
  // As a user does: a checkbox turns before it tells.
  void press(NSButton* control) {
    control.state =
        control.state == NSControlStateValueOn ? NSControlStateValueOff : NSControlStateValueOn;
    doubles::act(control.target, control.action, control);
  }
  std::vector<std::string> titles() {
    std::vector<std::string> found;
    for (NSView* each in controls())
      found.push_back([each isKindOfClass:NSButton.class]
                          ? ((NSButton*)each).title.UTF8String
                          : ((NSTextField*)each).stringValue.UTF8String);
    return found;
  }
  std::vector<std::string> take() { return std::exchange(seen, {}); }

  std::vector<std::string> seen;
  std::function<void()> reaction;
  std::unique_ptr<ViewWindow> window;
};

ViewNode text(const std::string& id) { return {.id = id, .label = id}; }
ViewNode pushButton(const std::string& id) {
  return {.kind = Kind::button, .id = id, .label = id, .action = "press"};
}

TEST_F(TreeWindowTest, ShowsTheTreeInFrontAndClosesSilentlyWhenItIsDestroyed) {
  open({text("a"), pushButton("b")});
  EXPECT_TRUE(native().visible);
  EXPECT_STREQ(native().title.UTF8String, "Settings");
  EXPECT_FALSE(native().releasedWhenClosed);
  EXPECT_THAT(titles(), ElementsAre("a", "b"));
  NSWindow* kept = native();
  window.reset();
  EXPECT_FALSE(kept.visible);
  EXPECT_THAT(take(), IsEmpty());
}

TEST_F(TreeWindowTest, TheUsersClosingIsToldOnce) {
  open({});
  [native() close];
  window.reset();
  EXPECT_THAT(take(), ElementsAre("closed"));
  open({});
  reaction = [this] { window.reset(); };
  [native() close];
  EXPECT_THAT(take(), ElementsAre("closed"));
}

TEST_F(TreeWindowTest, AControlGoesOnShowingWhatItsNodeSays) {
  ViewNode toggle{.kind = Kind::toggle, .id = "t", .label = "t", .action = "turn", .isOn = false};
  open({toggle});
  press(button(0));
  EXPECT_EQ(button(0).state, NSControlStateValueOff);
  EXPECT_THAT(take(), ElementsAre("turn t 1"));
  toggle.isOn = true;
  window->apply({{.kind = Step::set, .id = "t", .node = toggle}});
  EXPECT_EQ(button(0).state, NSControlStateValueOn);
  press(button(0));
  EXPECT_THAT(take(), ElementsAre("turn t 0"));
}

TEST_F(TreeWindowTest, ARadioGroupTellsAnotherChoiceOnly) {
  ViewNode group{
      .kind = Kind::radioGroup, .id = "r", .action = "choose", .options = {"x", "y", "z"}};
  group.selection = 0;
  open({group});
  const auto options = [this] {
    return ((NSStackView*)controls()[0].subviews.lastObject).arrangedSubviews;
  };
  press(options()[0]);
  press(options()[2]);
  EXPECT_THAT(take(), ElementsAre("choose r 2"));
  EXPECT_EQ([options()[0] state], NSControlStateValueOn);
  EXPECT_EQ([options()[2] state], NSControlStateValueOff);
  group.options = {"x", "new"};
  group.selection = 1;
  window->apply({{.kind = Step::set, .id = "r", .node = group}});
  ASSERT_EQ(options().count, 2U);
  EXPECT_STREQ([options()[1] title].UTF8String, "new");
  EXPECT_EQ([options()[1] state], NSControlStateValueOn);
}

TEST_F(TreeWindowTest, StepsInsertRemoveAndReplaceInPlace) {
  open({text("a"), text("b")});
  NSView* kept = controls()[1];
  // What is a window of its own takes no place among its siblings.
  window->apply({{.kind = Step::insert,
                  .parent = "root",
                  .index = 0,
                  .node = {.kind = Kind::sheet, .id = "s"}},
                 {.kind = Step::insert, .parent = "root", .index = 2, .node = text("c")},
                 {.kind = Step::remove, .id = "a"},
                 {.kind = Step::replace, .id = "c", .node = pushButton("d")}});
  EXPECT_THAT(titles(), ElementsAre("d", "b"));
  EXPECT_EQ(controls()[1], kept);
  window->apply({{.kind = Step::remove, .id = "gone"},
                 {.kind = Step::insert, .parent = "root", .index = 9, .node = text("e")},
                 {.kind = Step::remove, .id = "root"},
                 {.kind = Step::set, .id = "b", .node = pushButton("b")}});
  EXPECT_THAT(titles(), ElementsAre("d", "b")) << "steps that don't fit";
}

TEST_F(TreeWindowTest, AnActionMayReplaceItsOwnControlOrDestroyTheWindow) {
  open({pushButton("a")});
  reaction = [this] {
    window->apply({{.kind = Step::replace, .id = "a", .node = pushButton("b")}});
  };
  @autoreleasepool {
    press(button(0));
  }
  EXPECT_THAT(titles(), ElementsAre("b"));
  reaction = [this] { window.reset(); };
  press(button(0));
  EXPECT_THAT(take(), ElementsAre("press a 0", "press b 0"));
}

TEST_F(TreeWindowTest, ASheetIsOverTheWindowWhileItIsInTheTree) {
  open({{.kind = Kind::sheet,
         .id = "s",
         .action = "cancel",
         .children = {text("a"), pushButton("b"), text("c")}}});
  NSWindow* sheet = doubles::application().sheet;
  EXPECT_EQ(sheet.sheetParent, native());
  NSArray<NSView*>* rows = ((NSStackView*)sheet.contentView).arrangedSubviews;
  EXPECT_EQ(((NSStackView*)rows[0]).arrangedSubviews.count, 2U);
  EXPECT_EQ(((NSStackView*)rows[1]).arrangedSubviews.count, 1U);
  [(id)sheet cancelOperation:nil];
  EXPECT_THAT(take(), ElementsAre("cancel s 0"));
  EXPECT_NE(doubles::application().sheet, nil) << "it goes when the tree says so";
  window->apply({{.kind = Step::remove, .id = "s"}});
  EXPECT_EQ(doubles::application().sheet, nil);
}

TEST_F(TreeWindowTest, AnAlertTellsItsButtonOrItsOwnAction) {
  const ViewNode alert{.kind = Kind::alert,
                       .id = "alert",
                       .label = "Title",
                       .action = "dismiss",
                       .children = {text("one"), pushButton("yes"), text("two"), pushButton("no")}};
  for (const int answer : {1, 7}) {
    open({text("a"), alert});
    NSAlert* shown = doubles::application().alert;
    EXPECT_STREQ(shown.messageText.UTF8String, "Title");
    EXPECT_STREQ(shown.informativeText.UTF8String, "one\ntwo");
    EXPECT_EQ(shown.buttons.count, 2U);
    reaction = [this] { window->apply({{.kind = Step::remove, .id = "alert"}}); };
    doubles::press(answer);
    EXPECT_THAT(take(), ElementsAre(answer == 1 ? "press no 0" : "dismiss alert 0"));
    window.reset();
  }
}

TEST_F(TreeWindowTest, AnAlertThatTheTreeTakesAwayTellsNothing) {
  open({{.kind = Kind::alert, .id = "alert", .action = "dismiss"}});
  window->apply({{.kind = Step::remove, .id = "alert"}});
  EXPECT_EQ(doubles::application().alert, nil);
  EXPECT_THAT(take(), IsEmpty());
}

TEST(TreeWindowTabs, StandInTheOrderOfTheTree) {
  const auto tab = [](const std::string& id) {
    return ViewNode{.kind = Kind::tab,
                    .id = id,
                    .label = id,
                    .symbol = "gearshape",
                    .children = {text(id + "/t")}};
  };
  const auto window = openTreeWindow(
      "", {.kind = Kind::tabView, .id = "root", .children = {tab("a"), tab("b")}}, {});
  auto* tabs = (NSTabViewController*)doubles::application().front.contentViewController;
  const auto labels = [tabs] {
    std::vector<std::string> found;
    for (NSTabViewItem* each in tabs.tabViewItems) found.push_back(each.label.UTF8String);
    return found;
  };
  window->apply({{.kind = Step::insert, .parent = "root", .index = 1, .node = tab("c")}});
  EXPECT_THAT(labels(), ElementsAre("a", "c", "b"));
  window->apply({{.kind = Step::remove, .id = "a"}});
  EXPECT_THAT(labels(), ElementsAre("c", "b"));
  EXPECT_NE([tabs.tabViewItems[0] image], nil);
}

}  // namespace
}  // namespace kelvane
