// The small views by themselves.
#include <functional>
#include <optional>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_preferences.h"
#include "platform/memory/memory_run_loop.h"
#include "settings/views/multi_checkbox_picker.h"
#include "settings/views/picker_toggle_style.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SettingsViewsTest : public ::testing::Test {
 protected:
  MemoryPreferences preferences;
  MemoryRunLoop loop;
  SettingsKeys settings{preferences};
  int redraws = 0;
  const std::function<void()> redraw = [this] { ++redraws; };
  std::optional<ViewScope> scope;
};

TEST_F(SettingsViewsTest, APickerOfABooleanKeepsItsOrder) {
  for (const bool reversed : {false, true}) {
    const PickerToggleStyle style{"Yes", "No", PickerStyle::radioGroup, reversed};
    for (const bool isOn : {false, true}) {
      std::vector<bool> stored;
      scope.emplace(redraw);
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
  scope.emplace(redraw);
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
