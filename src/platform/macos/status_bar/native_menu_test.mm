#include "platform/macos/status_bar/native_menu.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <doubles/doubles.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/status_bar/mac_status_bar.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class TestMenu : public Menu {
 public:
  const std::vector<MenuLine>& lines() const override { return shown; }
  void needsUpdate() override {
    seen.push_back("update");
    if (update) update();
    shown = next;
  }
  void willOpen() override { seen.push_back("open"); }
  void didClose() override { seen.push_back("close"); }
  std::vector<std::string> take() { return std::exchange(seen, {}); }

  std::vector<MenuLine> next, shown;
  std::vector<std::string> seen;
  std::function<void()> update;
};

class NativeMenuTest : public ::testing::Test {
 protected:
  void SetUp() override { item->setMenu(&menu); }
  NSMenu* native() { return doubles::statusBar().items.at(0).menu; }
  NSArray<NSMenuItem*>* open() {
    doubles::openMenu(native());
    return native().itemArray;
  }

  TestMenu menu;
  MacStatusBar bar;
  std::unique_ptr<StatusItem> item = bar.makeItem(20);
};

TEST_F(NativeMenuTest, IsBuiltAnewEachTimeItOpens) {
  menu.next = {{.title = "one"}, {.kind = MenuLine::Kind::separator}};
  EXPECT_EQ(open().count, 2U);
  menu.next = {{.title = "two", .isEnabled = false}};
  NSArray<NSMenuItem*>* items = open();
  EXPECT_THAT(menu.take(), ElementsAre("update", "open", "update", "open"));
  ASSERT_EQ(items.count, 1U);
  EXPECT_STREQ(items[0].title.UTF8String, "two");
  EXPECT_FALSE(items[0].enabled);
  EXPECT_FALSE(native().autoenablesItems) << "the lines say which can be chosen";
  [native().delegate menuDidClose:native()];
  EXPECT_THAT(menu.take(), ElementsAre("close"));
}

TEST_F(NativeMenuTest, LinesBecomeItemsWithTheirKeysAndActions) {
  int chosen = 0;
  menu.next = {{.title = "plain", .keyEquivalent = {"q", true, false}, .action = [&] { ++chosen; }},
               {.title = "alternate",
                .keyEquivalent = {"q", true, true},
                .isAlternate = true,
                .action = [&] { chosen += 10; }},
               {.kind = MenuLine::Kind::placeholder},
               {.title = "detail", .keyEquivalent = {"", false, true}, .isAlternate = true},
               {.title = "fallback", .attributedTitle = AttributedText{{{.text = "shown"}}}}};
  NSArray<NSMenuItem*>* items = open();
  ASSERT_EQ(items.count, 5U);
  const NSEventModifierFlags command = NSEventModifierFlagCommand;
  const NSEventModifierFlags option = NSEventModifierFlagOption;
  const NSEventModifierFlags masks[] = {command, command | option, command, option, command};
  for (NSUInteger i = 0; i < 5; ++i) {
    EXPECT_EQ(items[i].keyEquivalentModifierMask, masks[i]) << i;
    EXPECT_EQ(items[i].alternate != 0, i == 1 || i == 3) << i;
  }
  EXPECT_STREQ(items[0].keyEquivalent.UTF8String, "q");
  EXPECT_FALSE(items[2].enabled);
  EXPECT_NE(items[2].view, nil);
  EXPECT_STREQ(items[4].attributedTitle.string.UTF8String, "shown");
  for (NSMenuItem* each in items) doubles::choose(each);
  EXPECT_EQ(chosen, 11);
}

TEST_F(NativeMenuTest, SubmenusLiveWithTheirLine) {
  auto submenu = std::make_shared<TestMenu>();
  submenu->next = {{.title = "inside"}};
  const std::weak_ptr<TestMenu> weak = submenu;
  menu.next = {{.title = "outside", .submenu = submenu}};
  NSMenu* native = open()[0].submenu;
  menu.next.clear();
  menu.shown.clear();
  submenu.reset();
  doubles::openMenu(native);
  EXPECT_STREQ(native.itemArray[0].title.UTF8String, "inside");
  EXPECT_FALSE(weak.expired());
}

TEST_F(NativeMenuTest, AnActionMayBuildTheMenuAnewOrTakeItAway) {
  auto own = std::make_shared<int>(0);
  menu.next = {{.title = "rebuild", .action = [this, own] {
                  menu.next.clear();
                  open();
                  item->setMenu(nullptr);
                  ++*own;
                }}};
  @autoreleasepool {
    doubles::choose(open()[0]);
  }
  EXPECT_EQ(*own, 1);
  EXPECT_EQ(native(), nil);
}

TEST_F(NativeMenuTest, AMenuThatIsTakenAwayIsNotCalledAgain) {
  NSMenu* old = native();
  menu.update = [this] { item->setMenu(nullptr); };
  menu.next = {{.title = "late"}};
  EXPECT_NO_FATAL_FAILURE(doubles::openMenu(old));
  EXPECT_THAT(menu.take(), ElementsAre("update"));
  EXPECT_EQ(old.itemArray.count, 0U);
  item->setMenu(&menu);
  old = native();
  item.reset();
  doubles::openMenu(old);
  [old.delegate menuDidClose:old];
  EXPECT_THAT(menu.take(), IsEmpty());
}

}  // namespace
}  // namespace kelvane
