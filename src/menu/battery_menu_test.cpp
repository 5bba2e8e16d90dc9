#include "menu/battery_menu.h"

#include <limits>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "battery/battery.h"
#include "menu/callback_menu_item.h"
#include "menu/tq_menu.h"
#include "platform/memory/memory_computer.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

using Lines = std::vector<std::string>;

// A line with all that can be told from others: "+" can be chosen, "-" can't, "=" is a separator
// and "0" a placeholder.
std::string describe(const MenuLine& line) {
  const std::string state = line.isEnabled ? "+" : "-";
  if (line.kind == MenuLine::Kind::separator) return "=";
  if (line.kind == MenuLine::Kind::placeholder) return state + "0";
  std::string text = state + line.title;
  if (line.isAlternate) text += " [alternate]";
  if (line.keyEquivalent.option) text += " [option]";
  if (line.keyEquivalent.command) text += " [command " + line.keyEquivalent.key + "]";
  if (line.submenu) text += " [submenu]";
  return text;
}

Lines describe(const Menu& menu) {
  Lines result;
  for (const MenuLine& line : menu.lines()) result.push_back(describe(line));
  return result;
}

class BatteryMenuTest : public ::testing::Test {
 protected:
  void rebuild() {
    rebuildBatteryMenu(
        menu, {battery, computer.runLoop, computer.systemInfo, computer.textFormats, actions});
  }
  // The lines of a new rebuild up to those that need Option.
  Lines readings() {
    rebuild();
    Lines lines = describe(menu);
    lines.resize(lines.size() - 9);
    return lines;
  }
  // By its title, in the menu or in "More".
  void choose(const std::string& title) {
    for (const Menu* each : {static_cast<const Menu*>(&menu), more()})
      for (const MenuLine& line : each->lines())
        if (line.title == title) line.action();
  }
  const Menu* more() { return menu.lines()[menu.lines().size() - 3].submenu.get(); }
  std::function<void()> note(const char* name) {
    return [this, name] { done.push_back(name); };
  }

  MemoryComputer computer;  // its clock stands at 9:00
  Battery battery{computer.registry, computer.powerSources, computer.runLoop};
  TqMenu menu;
  Lines done;
  BatteryMenuActions actions{note("preferences"), note("battery settings"), note("about"),
                             note("feedback"), note("faq")};
};

TEST_F(BatteryMenuTest, EveryLineInItsPlace) {
  computer.set({.percent = 57, .estimate = 7500, .health = "Fair"});
  computer.systemInfo.lowPowerMode = true;
  // Opened again and again, it is built anew and nothing piles up.
  for (int i = 0; i < 3; ++i) {
    rebuild();
    EXPECT_THAT(describe(menu),
                ElementsAreArray(Lines{"-57﹪", "-2h 5m Remaining", "-Empty At 11:05", "-Battery",
                                       "-Low Power Mode Enabled", "-0",
                                       "-Condition: Fair [alternate] [option]", "-0",
                                       "-Health: 89% [alternate] [option]", "=",
                                       "+Preferences… [command ,]", "+More [submenu]", "=", "="}));
    EXPECT_THAT(describe(*more()), ElementsAreArray(Lines{"+Battery Preferences…", "=", "+About",
                                                          "=", "+Send Feedback…", "=", "+FAQ"}));
    EXPECT_EQ(menu.lines()[0].attributedTitle->runs[0].text, "57﹪");
    EXPECT_EQ(menu.lines()[0].attributedTitle->runs[0].fontSize, 15.0);
  }
  const std::shared_ptr<Menu> before = menu.lines()[11].submenu;
  rebuild();
  EXPECT_NE(menu.lines()[11].submenu, before);
}

TEST_F(BatteryMenuTest, ReadingsForEachState) {
  const struct {
    MemoryBattery battery;
    Lines lines;
  } rows[] = {
      {{.percent = 57, .estimate = 7500},
       {"-57﹪", "-2h 5m Remaining", "-Empty At 11:05", "-Battery"}},
      {{.percent = 57}, {"-57﹪", "-Calculating Time Remaining…", "-Battery"}},
      {{.percent = 0, .estimate = 0}, {"-0﹪", "-0m Remaining", "-Empty At 09:00", "-Battery"}},
      {{.percent = 100, .estimate = 71999},
       {"-100﹪", "-19h 59m Remaining", "-Empty At 04:59", "-Battery"}},
      {{.percent = 99, .estimate = 72000},
       {"-99﹪", "-20h+ Remaining", "-Empty At 05:00", "-Battery"}},
      {{.percent = 57, .isOnPower = true, .minutesUntilFull = 45},
       {"-57﹪", "-45m Until Full", "-Full At 09:45", "-Power Adapter"}},
      {{.percent = 80, .isOnPower = true, .isCharging = false},
       {"-80﹪", "-Not Charging", "-Power Adapter"}},
      {{.percent = 100, .isOnPower = true}, {"-Fully Charged", "-Power Adapter"}},
      {{.percent = 100, .isOnPower = true, .isCharging = false},
       {"-Fully Charged", "-Power Adapter"}},
  };
  for (const auto& row : rows) {
    computer.set(row.battery);
    EXPECT_THAT(readings(), ElementsAreArray(row.lines));
  }
}

TEST_F(BatteryMenuTest, NearlyFullIsRoundedAndStillCharging) {
  computer.set({.percent = 100, .isOnPower = true, .minutesUntilFull = 3});
  auto& source = computer.powerSources.sources[0];
  source.insert_or_assign("Current Capacity", 996);
  source.insert_or_assign("Max Capacity", 1000);
  EXPECT_THAT(readings(),
              ElementsAre("-100﹪", "-3m Until Full", "-Full At 09:03", "-Power Adapter"));
}

TEST_F(BatteryMenuTest, WhatCannotBeReadHasItsFallback) {
  computer.set({.percent = 57, .isOnPower = true, .minutesUntilFull = 45, .designCapacity = 0});
  for (const auto& unreadable : {std::optional<PropertyValue>(), {PropertyValue("yes")}}) {
    const auto put = [&](const char* name) {
      computer.registry.properties.erase(name);
      if (unreadable) computer.registry.properties.emplace(name, *unreadable);
    };
    put("ExternalConnected");
    computer.registry.properties.insert_or_assign("IsCharging", true);
    EXPECT_THAT(readings(),
                ElementsAre("-57﹪", "-45m Until Full", "-Full At 09:45", "-Power Adapter"));
    put("IsCharging");
    EXPECT_THAT(readings(), ElementsAre("-57﹪", "-Not Charging", "-Power Adapter"));
    EXPECT_EQ(describe(menu)[6], "-Health:  [alternate] [option]");
  }
  struct NoDurations : PortableTextFormats {
    NoDurations() : PortableTextFormats({}) {}
    std::optional<std::string> abbreviatedDuration(double) override { return {}; }
  } formats;
  computer.set({.percent = 57, .estimate = 7500});
  rebuildBatteryMenu(menu, {battery, computer.runLoop, computer.systemInfo, formats, actions});
  EXPECT_EQ(menu.lines()[1].title, "🤷🏻♂️ Remaining");
}

TEST_F(BatteryMenuTest, LowPowerModeShowsWhereTheSystemHasIt) {
  computer.set({.percent = 57});
  const struct {
    std::optional<SystemVersion> version;
    bool isOn, isShown;
  } rows[] = {{{}, true, true},
              {{}, false, false},
              {{{11, 7, 10}}, true, false},
              {{{12, 0, 0}}, true, true},
              {{{12, 0, 0}}, false, false}};
  for (const auto& row : rows) {
    computer.systemInfo.version = row.version;
    computer.systemInfo.lowPowerMode = row.isOn;
    EXPECT_EQ(readings().back() == "-Low Power Mode Enabled", row.isShown);
  }
}

TEST_F(BatteryMenuTest, EachCommandDoesWhatItSays) {
  rebuild();
  choose("Preferences…");
  EXPECT_THAT(done, IsEmpty());  // on the main queue
  computer.runLoop.run();
  for (const char* title : {"Battery Preferences…", "About", "Send Feedback…", "FAQ"})
    choose(title);
  EXPECT_THAT(done, ElementsAre("preferences", "battery settings", "about", "feedback", "faq"));
  actions.showPreferencesWindow = nullptr;
  rebuild();
  choose("Preferences…");
  computer.runLoop.run();
}

TEST_F(BatteryMenuTest, ValidationHookIsAskedForEachItem) {
  CallbackMenuItem::validationHook = [](const CallbackMenuItem& item) {
    return item.title() != "About";
  };
  rebuild();
  CallbackMenuItem::validationHook = nullptr;
  EXPECT_THAT(describe(*more()), ElementsAreArray(Lines{"+Battery Preferences…", "=", "-About", "=",
                                                        "+Send Feedback…", "=", "+FAQ"}));
  // What was added disabled stays so, whatever the hook says.
  EXPECT_EQ(describe(menu)[3], "-Condition: Good [alternate] [option]");
}

TEST(TqMenuTest, PublishesWhatItsHostSays) {
  TqMenu menu;
  std::vector<std::string> seen;
  menu.onUpdate = [&](TqMenu&) { seen.push_back("onUpdate"); };
  const auto open = menu.isOpenPublisher().subscribe(
      [&](bool isOpen) { seen.push_back(isOpen ? "open" : "closed"); });
  const auto update =
      menu.needsUpdatePublisher().subscribe([&](std::monostate) { seen.push_back("update"); });
  menu.needsUpdate();
  menu.willOpen();
  EXPECT_TRUE(menu.isOpen());
  menu.didClose();
  EXPECT_FALSE(menu.isOpen());
  EXPECT_THAT(seen, ElementsAreArray({"closed", "update", "onUpdate", "open", "closed"}));
}

}  // namespace
}  // namespace kelvane
