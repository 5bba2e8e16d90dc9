#include "platform/linux/tray/dbus_menu_layout.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_menu.h"

namespace kelvane {
namespace {

using testing::ElementsAre;

MenuLine text(const std::string& title) {
  MenuLine line;
  line.title = title;
  line.isEnabled = false;
  return line;
}
MenuLine command(const std::string& title) {
  MenuLine line = text(title);
  line.isEnabled = true;
  return line;
}
MenuLine ofKind(MenuLine::Kind kind) {
  MenuLine line;
  line.kind = kind;
  return line;
}
const MenuLine kSeparator = ofKind(MenuLine::Kind::separator);
const MenuLine kPlaceholder = ofKind(MenuLine::Kind::placeholder);
MenuLine submenu(const std::string& title, std::vector<MenuLine> lines) {
  MenuLine line = command(title);
  line.submenu = std::make_shared<MemoryMenu>(std::move(lines));
  return line;
}

// "id:label", "id:-" for a separator, children in brackets.
std::string shown(const MenuEntry& entry) {
  std::string result;
  for (const MenuEntry& child : entry.children) {
    result += (result.empty() ? "" : " ") + std::to_string(child.id) + ":" +
              (child.isSeparator ? "-" : child.label);
    if (child.hasSubmenu) result += "[" + shown(child) + "]";
  }
  return result;
}

TEST(DbusMenuLayout, ExportsWhatAHostCanShow) {
  DbusMenuLayout layout([](std::string title) { return title == "57﹪" ? "57%" : title; });
  MenuLine percentage = text("");
  percentage.attributedTitle = AttributedText{{{"57﹪", 15.0, {}, {}}}};
  MenuLine condition = text("Condition: Good");
  condition.isAlternate = true;
  condition.keyEquivalent.option = true;
  MenuLine preferences = command("Preferences_1…");
  preferences.keyEquivalent = {",", true, false};
  EXPECT_TRUE(layout
                  .update({kSeparator, percentage, kPlaceholder, condition, kSeparator, kSeparator,
                           preferences, submenu("More", {command("FAQ"), kSeparator}), kSeparator,
                           kSeparator})
                  .layout);
  EXPECT_EQ(shown(layout.root()), "1:57% 2:Condition: Good 3:- 4:Preferences__1… 5:More[6:FAQ]");
  EXPECT_EQ(layout.find(2)->keyEquivalent, KeyEquivalent());
  EXPECT_EQ(layout.find(4)->keyEquivalent.key, ",");
  EXPECT_EQ(layout.find(7), nullptr);
}

TEST(DbusMenuLayout, TellsTextsFromLinesThatComeAndGo) {
  struct Case {
    std::string name;
    std::vector<MenuLine> lines;
    MenuChange change;
    std::string after;
  };
  const std::vector<MenuLine> before{
      text("57%"), text("Calculating…"),    text("Battery"),
      kSeparator,  command("Preferences…"), submenu("More", {command("FAQ")})};
  const Case cases[] = {
      {"nothing", before, {}, "1:57% 2:Calculating… 3:Battery 4:- 5:Preferences…"},
      {"two texts",
       {text("56%"), text("Calculating…"), text("Battery!"), kSeparator, command("Preferences…"),
        submenu("More", {command("FAQ")})},
       {false, {{1, true, false}, {3, true, false}}},
       "1:56% 2:Calculating… 3:Battery! 4:- 5:Preferences…"},
      {"enabled",
       {command("57%"), text("Calculating…"), text("Battery"), kSeparator, command("Preferences…"),
        submenu("More", {command("FAQ")})},
       {false, {{1, false, true}}},
       "1:57% 2:Calculating… 3:Battery 4:- 5:Preferences…"},
      {"a line in a submenu",
       {text("57%"), text("Calculating…"), text("Battery"), kSeparator, command("Preferences…"),
        submenu("More", {command("Help")})},
       {false, {{7, true, false}}},
       "1:57% 2:Calculating… 3:Battery 4:- 5:Preferences…"},
      {"a line more",
       {text("57%"), text("3h Remaining"), text("Empty At 4"), text("Battery"), kSeparator,
        command("Preferences…"), submenu("More", {command("FAQ")})},
       {true, {}},
       "1:57% 2:3h Remaining 3:Empty At 4 8:Battery 4:- 5:Preferences…"},
      {"a command in place of another",
       {text("57%"), text("Battery"), kSeparator, command("Quit"), command("Preferences…"),
        submenu("More", {command("FAQ")})},
       {true, {}},
       "1:57% 2:Battery 4:- 8:Quit 5:Preferences…"},
  };
  for (const Case& each : cases) {
    DbusMenuLayout layout;
    layout.update(before);
    EXPECT_EQ(layout.update(each.lines), each.change) << each.name;
    const std::string after = shown(layout.root());
    EXPECT_EQ(after.substr(0, after.find(" 6:More[7:")), each.after) << each.name << ": " << after;
  }
}

TEST(DbusMenuLayout, NeverGivesTheIdOfALineThatHasGoneToAnother) {
  DbusMenuLayout layout;
  layout.update({command("A"), command("B")});
  layout.update({command("B")});
  layout.update({command("B"), command("C")});
  EXPECT_EQ(shown(layout.root()), "2:B 3:C");
  layout.update({});
  EXPECT_EQ(layout.find(2), nullptr);
  EXPECT_NE(layout.find(DbusMenuLayout::kRootId), nullptr);
}

TEST(DbusMenuLayout, EndsAMenuThatContainsItself) {
  struct Endless : MemoryMenu {
    using MemoryMenu::MemoryMenu;
    const std::vector<MenuLine>& lines() const override { return own; }
    std::vector<MenuLine> own;
  };
  const auto menu = std::make_shared<Endless>(std::vector<MenuLine>{});
  MenuLine again = command("Again");
  again.submenu = menu;
  menu->own = {again};
  DbusMenuLayout layout;
  EXPECT_TRUE(layout.update(menu->lines()).layout);
  EXPECT_LT(layout.entries().size(), 20U);
  menu->own.clear();
}

}  // namespace
}  // namespace kelvane
