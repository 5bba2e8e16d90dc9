#include "store/setting_key.h"

#include <chrono>
#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_preferences.h"
#include "store/format_upgrade.h"

namespace kelvane {
namespace {

using ::testing::IsEmpty;
using Levels = std::set<double>;

struct BoolCase {
  PropertyValue stored;
  std::optional<bool> read;
};

TEST(BoolSetting, ReadsBooleansAndTheJsonTextOfOlderVersions) {
  const std::vector<BoolCase> cases = {
      {true, true},
      {false, false},
      {"true", true},
      {"false", false},
      {" true ", true},
      {"false, true", false},
      {"true, 1", std::nullopt},
      {"yes", std::nullopt},
      {"", std::nullopt},
      {"1", std::nullopt},
      {"[true]", std::nullopt},
      {"true]", std::nullopt},
      {"tr\xff", std::nullopt},
      {1, std::nullopt},
      {1.0, std::nullopt},
      {PropertyArray{true}, std::nullopt},
  };
  for (const auto& [stored, read] : cases)
    for (const bool defaultValue : {false, true}) {
      MemoryPreferences preferences({{"key", stored}});
      const SettingKey<bool> key("key", defaultValue, preferences);
      EXPECT_EQ(key.get(), read.value_or(defaultValue)) << stored.string().value_or("no string");
    }
}

TEST(SetSetting, ReadsArraysOfNumbersOnly) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const Levels defaultValue = {0.5};
  const std::vector<std::pair<PropertyValue, Levels>> cases = {
      {PropertyArray{}, {}},
      {PropertyArray{0.8, 0.2, 0.2}, {0.2, 0.8}},
      {PropertyArray{1, 0.2}, {0.2, 1.0}},
      {PropertyArray{0.2, "0.3"}, defaultValue},
      {PropertyArray{0.2, true}, defaultValue},
      {PropertyArray{0.2, nan, 0.3}, defaultValue},
      {0.2, defaultValue},
      {"[0.2]", defaultValue},
  };
  for (const auto& [stored, read] : cases) {
    MemoryPreferences preferences({{"key", stored}});
    EXPECT_EQ(SettingKey<Levels>("key", defaultValue, preferences).get(), read);
  }
}

TEST(SettingKey, RegistersItsDefaultForReadersThatBypassIt) {
  MemoryPreferences preferences;
  const SettingKey<bool> flag("flag", true, preferences);
  const SettingKey<Levels> levels("levels", {0.2}, preferences);
  const SettingKey<std::optional<double>> place("place", std::nullopt, preferences);
  EXPECT_TRUE(flag.get());
  EXPECT_EQ(preferences.object("flag"), PropertyValue(true));
  EXPECT_EQ(preferences.object("levels"), PropertyValue(PropertyArray{0.2}));
  EXPECT_EQ(preferences.object("place"), std::nullopt);
  EXPECT_EQ(place.get(), std::nullopt);
  EXPECT_THAT(preferences.stored(), IsEmpty());
}

TEST(SettingKey, WritesWhatItReads) {
  MemoryPreferences preferences;
  const Date now = std::chrono::sys_days(std::chrono::year(2026) / 3 / 14);
  const SettingKey<bool> flag("flag", true, preferences);
  const SettingKey<Levels> levels("levels", {0.2}, preferences);
  const SettingKey<std::int64_t> count("count", 0, preferences);
  const SettingKey<std::optional<Date>> date("date", std::nullopt, preferences);
  const SettingKey<std::optional<double>> place("place", std::nullopt, preferences);
  flag.set(false);
  levels.set({});
  count.set(7);
  date.set(now);
  place.set(2.5);
  EXPECT_EQ(preferences.stored(), (PropertyDictionary{{"flag", false},
                                                      {"levels", PropertyArray{}},
                                                      {"count", 7},
                                                      {"date", now},
                                                      {"place", 2.5}}));
  EXPECT_FALSE(flag.get());
  EXPECT_EQ(levels.get(), Levels{});
  EXPECT_EQ(count.get(), 7);
  EXPECT_EQ(date.get(), now);
  EXPECT_EQ(place.get(), 2.5);

  date.set(std::nullopt);
  place.set(std::nullopt);
  EXPECT_EQ(preferences.stored().size(), 3U);
}

TEST(FormatUpgrade, ReplacesJsonTextAndLeavesTheRest) {
  const std::vector<std::pair<PropertyValue, PropertyValue>> cases = {
      {"[0.8, 0.2]", PropertyArray{0.2, 0.8}},
      {"[]", PropertyArray{}},
      {"[1]", PropertyArray{1.0}},
      {"[0.2", "[0.2"},
      {"0.2", "0.2"},
      {"[true]", "[true]"},
      {"[\"0.2\"]", "[\"0.2\"]"},
      {"[1e999]", "[1e999]"},
      {PropertyArray{0.8, 0.2}, PropertyArray{0.8, 0.2}},
      {5, 5},
  };
  for (const auto& [before, after] : cases) {
    MemoryPreferences preferences({{"key", before}});
    upgradeFormat(SettingKey<Levels>("key", {}, preferences));
    EXPECT_EQ(preferences.object("key"), after) << before.string().value_or("no string");
  }
  MemoryPreferences preferences;
  upgradeFormat(SettingKey<Levels>("key", {}, preferences));
  EXPECT_THAT(preferences.stored(), IsEmpty());
}

}  // namespace
}  // namespace kelvane
