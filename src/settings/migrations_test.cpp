#include "settings/migrations.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_preferences.h"
#include "store/observe.h"

namespace kelvane {
namespace {

const char* const kOnPower = "notifyAtPercentagesOnPower";
const char* const kOnBattery = "notifyAtPercentagesOnBattery";
const char* const kOldList = "notifyAtPercentages";
const PropertyDictionary kMarks = {
    {"Tq_App_runOnce__migrateDefaultsToV5", true},
    {"Tq_App_runOnce__migrateNotifyAtPercentagesSetting", true},
};

PropertyDictionary with(PropertyDictionary values, const PropertyDictionary& more) {
  values.insert(more.begin(), more.end());
  return values;
}

PropertyDictionary migrated(const PropertyDictionary& before) {
  MemoryPreferences preferences(before);
  const SettingsKeys keys(preferences);
  int told = 0;
  const auto observation = observe({keys.notifyAtPercentagesOnPower,
                                    keys.notifyAtPercentagesOnBattery, keys.notifyAtPercentages},
                                   {}, [&] { ++told; });
  migrate(preferences, keys);
  EXPECT_EQ(told, 0);
  return preferences.stored();
}

TEST(Migrations, BringEveryOlderFormIntoThePresentOne) {
  const PropertyArray levels = {0.2, 0.8};
  struct Case {
    const char* what;
    PropertyDictionary before;
    PropertyDictionary after;
  };
  const std::vector<Case> cases = {
      {"nothing stored", {}, {{kOnPower, PropertyArray{}}, {kOnBattery, PropertyArray{}}}},
      {"the old list as text",
       {{kOldList, "[0.8, 0.2]"}},
       {{kOldList, levels}, {kOnPower, levels}, {kOnBattery, levels}}},
      {"the old list as an array is left as it is",
       {{kOldList, PropertyArray{0.8, 0.2}}},
       {{kOldList, PropertyArray{0.8, 0.2}}, {kOnPower, levels}, {kOnBattery, levels}}},
      {"malformed text does not stop the others",
       {{kOnPower, "[0.1"}, {kOldList, "[0.8, 0.2]"}},
       {{kOldList, levels}, {kOnPower, levels}, {kOnBattery, levels}}},
      {"a malformed old list stays and counts as empty",
       {{kOldList, "many"}},
       {{kOldList, "many"}, {kOnPower, PropertyArray{}}, {kOnBattery, PropertyArray{}}}},
  };
  for (const auto& [what, before, after] : cases)
    EXPECT_EQ(migrated(before), with(after, kMarks)) << what;
}

TEST(Migrations, EachRunsOnlyOnce) {
  const PropertyDictionary text = {{kOnPower, "[0.1]"}, {kOldList, "[0.2]"}};
  EXPECT_EQ(migrated(with(text, kMarks)), with(text, kMarks));

  // Between the two: the split still to come copies the list, the change of format is over.
  const PropertyDictionary halfway = {{kOnPower, "[0.1]"},
                                      {kOldList, PropertyArray{0.2}},
                                      {"Tq_App_runOnce__migrateDefaultsToV5", true}};
  EXPECT_EQ(migrated(halfway), with({{kOldList, PropertyArray{0.2}},
                                     {kOnPower, PropertyArray{0.2}},
                                     {kOnBattery, PropertyArray{0.2}}},
                                    kMarks));
}

TEST(Migrations, ATextThatOnlyTheFirstMigrationTouchesIsUpgraded) {
  const PropertyDictionary before = {{kOnBattery, "[0.3]"},
                                     {"Tq_App_runOnce__migrateNotifyAtPercentagesSetting", true}};
  EXPECT_EQ(migrated(before).at(kOnBattery), PropertyValue(PropertyArray{0.3}));
}

TEST(SettingsKeys, NamesAndDefaultsInOrder) {
  MemoryPreferences preferences;
  const SettingsKeys keys(preferences);
  std::vector<std::string> listed;
  keys.forEach([&](const auto& key) {
    const auto value = preferences.object(key.name());
    ASSERT_TRUE(value);
    const auto flag = value->boolean();
    const auto text = value->string();
    listed.push_back(key.name() + " " + (text ? *text : !flag ? "{}" : *flag ? "true" : "false"));
  });
  EXPECT_THAT(
      listed,
      ::testing::ElementsAre(
          "showPercentage true", "showTimeOrPercentageOnHover true", "largeIcon false",
          "oldIconStyle false", "showPercentageSignInIcon true", "textOnlyIcon false",
          "smallMenuBarText true", "hideIconWhenOnPower false", "notifyWhenFullyCharged false",
          "notifyAtPercentagesOnPower {}", "notifyAtPercentagesOnBattery {}",
          "notifyAtPercentages {}", "trayIconShape automatic", "trayIconColor automatic"));
  EXPECT_THAT(preferences.stored(), ::testing::IsEmpty());
}

}  // namespace
}  // namespace kelvane
