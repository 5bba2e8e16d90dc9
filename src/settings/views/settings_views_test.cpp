// The trees that the views make, and the small views by themselves.
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_desktop.h"
#include "platform/memory/memory_preferences.h"
#include "platform/memory/memory_run_loop.h"
#include "settings/views/multi_checkbox_picker.h"
#include "settings/views/settings_view.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

// What can be read in the tree, from top to bottom.
std::vector<std::string> texts(const ViewNode& node) {
  std::vector<std::string> lines;
  if (node.isOn) {
    lines.push_back((*node.isOn ? "[x] " : "[ ] ") + node.label);
  } else if (!node.label.empty()) {
    lines.push_back(node.label);
  }
  for (const ViewNode& child : node.children)
    for (std::string& line : texts(child)) lines.push_back(std::move(line));
  return lines;
}

class SettingsViewsTest : public ::testing::Test {
 protected:
  ViewNode remade() {
    scope.emplace(context.redraw);
    return view.body(*scope);
  }

  MemoryPreferences preferences;
  MemoryRunLoop loop;
  MemoryLoginItems loginItems;
  SettingsKeys settings{preferences};
  AutoStart autoStart{loginItems, "org.kelvane.Kelvane"};
  int redraws = 0;
  const ViewContext context{loop, settings, autoStart, [] {}, [this] { ++redraws; }};
  SettingsView view{context};
  std::optional<ViewScope> scope;
};

TEST_F(SettingsViewsTest, TheGeneralTabAndItsSheet) {
  std::vector<std::string> expected{"General", "[ ] Launch at login",
                                    "[ ] Notify when fully charged", "Notify at percentages…"};
  EXPECT_THAT(texts(remade().children[0]), ElementsAreArray(expected));

  const std::string button = "settings/general/form/stack/notifyAtPercentages/button";
  ASSERT_TRUE(scope->perform(button, button, 0));
  for (const char* title : {"On battery", "While charging"}) {
    expected.push_back(title);
    for (const char* level : {"10", "12", "15", "20", "25", "30", "35", "40", "50", "60", "70",
                              "75", "77", "80", "90", "95", "97"})
      expected.push_back("[ ] " + std::string(level) + "\xEF\xB9\xAA");
  }
  expected.push_back("Done");
  EXPECT_THAT(texts(remade().children[0]), ElementsAreArray(expected));
}

TEST_F(SettingsViewsTest, TheMenuBarTabHasOnlyWhatApplies) {
  const std::string small = "[x] Small text size";
  const std::string large = "[ ] Large icon";
  const std::string alternative = "[ ] Alternative icon style";
  const std::string sign = "[x] Show percentage sign";
  const struct {
    bool textOnly, percentage;
    std::vector<std::string> dependent;
  } rows[] = {{false, true, {large, alternative, sign}},
              {false, false, {large, alternative}},
              {true, true, {small, sign}},
              {true, false, {small}}};
  for (const auto& [textOnly, percentage, dependent] : rows) {
    settings.textOnlyIcon.set(textOnly);
    settings.showPercentage.set(percentage);
    std::vector<std::string> expected{"Menu Bar", "Show:", "Type:"};
    expected.insert(expected.end(), dependent.begin(), dependent.end());
    expected.push_back(percentage ? "[x] Show time remaining on hover"
                                  : "[x] Show percentage on hover");
    expected.push_back("[ ] Hide while on power");
    EXPECT_THAT(texts(remade().children[1]), ElementsAreArray(expected));
  }
}

TEST_F(SettingsViewsTest, APickerOfABooleanKeepsItsOrder) {
  for (const bool reversed : {false, true}) {
    const PickerToggleStyle style{"Yes", "No", PickerStyle::radioGroup, reversed};
    for (const bool isOn : {false, true}) {
      std::vector<bool> stored;
      scope.emplace(context.redraw);
      const ViewNode node = style.body(
          *scope, "p",
          "Really:", {[&] { return isOn; }, [&](bool value) { stored.push_back(value); }});
      ASSERT_EQ(node.options.size(), 2U);
      EXPECT_EQ(node.options[static_cast<std::size_t>(node.selection.value())],
                isOn ? "Yes" : "No");
      EXPECT_EQ(node.options[0], reversed ? "No" : "Yes");
      for (const int value : {0, 1, 2, -1}) scope->perform("p", "p", value);
      EXPECT_THAT(stored, ElementsAre(!reversed, reversed));
    }
  }
}

TEST_F(SettingsViewsTest, APickerOnASettingTellsEachNewSetWhileItIsShown) {
  std::vector<Levels> told;
  const SettingsMultiCheckboxPicker<double> picker(
      settings.notifyAtPercentagesOnPower, loop, {0.5, 0.2}, [](double) { return "level"; },
      [&](const Levels& levels) { told.push_back(levels); });
  scope.emplace(context.redraw);
  picker.body(*scope, "p");
  EXPECT_TRUE(scope->perform("p/1", "p/1", 0));
  EXPECT_THAT(told, IsEmpty()) << "the empty set is stored now, and was the default";
  EXPECT_TRUE(scope->perform("p/1", "p/1", 1));
  EXPECT_TRUE(scope->perform("p/1", "p/1", 1));
  preferences.changeElsewhere("notifyAtPercentagesOnPower", PropertyArray{0.5});
  EXPECT_TRUE(scope->perform("p/0", "p/0", 0));
  EXPECT_THAT(told, ElementsAre(Levels{0.2}, Levels{0.5}, Levels{}));
  EXPECT_GE(redraws, 3);
  scope.reset();
  settings.notifyAtPercentagesOnPower.set({0.3});
  EXPECT_EQ(told.size(), 3U);
}

}  // namespace
}  // namespace kelvane
