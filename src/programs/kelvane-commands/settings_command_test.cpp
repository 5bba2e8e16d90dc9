#include "programs/kelvane-commands/settings_command.h"

#include <algorithm>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_preferences.h"

namespace kelvane {
namespace {

using ::testing::HasSubstr;
using ::testing::MatchesRegex;

struct Result {
  int code;
  std::string out;
  std::string errors;
};

Result run(MemoryPreferences& preferences, const std::vector<std::string>& arguments) {
  std::ostringstream out, errors;
  const int code = runSettingsCommand(arguments, preferences, out, errors);
  return {code, out.str(), errors.str()};
}

TEST(SettingsCommand, ListsEverySettingWithTypeAndValue) {
  MemoryPreferences preferences(
      {{"notifyAtPercentages", "[0.77, 0.12, 1]"}, {"largeIcon", "true"}});
  const auto result = run(preferences, {"list"});
  EXPECT_EQ(result.code, 0);
  EXPECT_EQ(std::ranges::count(result.out, '\n'), 14);
  for (const char* line : {"showPercentage                boolean  true\n",
                           "largeIcon                     boolean  true\n",
                           "notifyAtPercentagesOnBattery  levels   [0.12,0.77,1.0]\n",
                           "trayIconColor                 choice   \"automatic\"\n"})
    EXPECT_THAT(result.out, HasSubstr(line));
}

TEST(SettingsCommand, SetsAndGets) {
  MemoryPreferences preferences;
  const std::vector<std::vector<std::string>> cases = {
      {"textOnlyIcon", "true", "true"},
      {"textOnlyIcon", " false ", "false"},
      {"notifyAtPercentagesOnBattery", "[0.2, 0.1,0.2]", "[0.1,0.2]"},
      {"notifyAtPercentagesOnBattery", "[1, 0]", "[0.0,1.0]"},
      {"notifyAtPercentagesOnBattery", "[]", "[]"},
      {"trayIconShape", "square", "\"square\""},
      {"trayIconShape", "\"wide\"", "\"wide\""},
      {"trayIconColor", "dark", "\"dark\""},
  };
  for (const auto& each : cases) {
    const auto set = run(preferences, {"set", each[0], each[1]});
    EXPECT_EQ(set.code, 0) << set.errors;
    EXPECT_EQ(set.out + set.errors, "");
    EXPECT_EQ(run(preferences, {"get", each[0]}).out, each[2] + "\n");
    EXPECT_EQ(preferences.written(), preferences.stored());
  }
}

TEST(SettingsCommand, AnOlderListIsSplitBeforeASettingIsStored) {
  MemoryPreferences preferences(PropertyDictionary{{"notifyAtPercentages", "[0.5]"}});
  run(preferences, {"set", "notifyAtPercentagesOnPower", "[0.9]"});
  EXPECT_EQ(run(preferences, {"get", "notifyAtPercentagesOnPower"}).out, "[0.9]\n");
  EXPECT_EQ(run(preferences, {"get", "notifyAtPercentagesOnBattery"}).out, "[0.5]\n");
}

TEST(SettingsCommand, WrongUseIsOneLineAndExitTwo) {
  const std::vector<std::vector<std::string>> cases = {
      {},
      {"erase"},
      {"list", "more"},
      {"get"},
      {"set", "textOnlyIcon"},
      {"set", "textOnlyIcon", "true", "more"},
      {"get", "volume"},
      {"get", "two\nlines"},
      {"set", "Tq_launchCount", "1"},
      {"set", "textOnlyIcon", "yes"},
      {"set", "textOnlyIcon", "1"},
      {"set", "textOnlyIcon", "\"true\""},
      {"set", "textOnlyIcon", ""},
      {"set", "trayIconShape", "round"},
      {"set", "trayIconShape", "Square"},
      {"set", "trayIconColor", "[\"dark\"]"},
      {"set", "trayIconColor", "2"},
      {"set", "notifyAtPercentagesOnPower", "0.2"},
      {"set", "notifyAtPercentagesOnPower", "[0.2"},
      {"set", "notifyAtPercentagesOnPower", "[20]"},
      {"set", "notifyAtPercentagesOnPower", "[-0.1]"},
      {"set", "notifyAtPercentagesOnPower", "[0.2,1e999]"},
      {"set", "notifyAtPercentagesOnPower", "[0.2,null]"},
      {"set", "notifyAtPercentagesOnPower", "[true]"},
      {"set", "notifyAtPercentagesOnPower", "\xff"},
  };
  for (const auto& arguments : cases) {
    MemoryPreferences preferences;
    const auto result = run(preferences, arguments);
    EXPECT_EQ(result.code, 2) << ::testing::PrintToString(arguments);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.errors, MatchesRegex("kelvane: [^\n]+\n"));
    EXPECT_FALSE(preferences.stored().contains("textOnlyIcon"));
  }
}

TEST(SettingsCommand, AWrongChoiceIsToldTheRightOnes) {
  MemoryPreferences preferences(PropertyDictionary{{"trayIconShape", "round"}});
  EXPECT_EQ(run(preferences, {"get", "trayIconShape"}).out, "\"automatic\"\n");
  EXPECT_EQ(run(preferences, {"set", "trayIconShape", "round"}).errors,
            "kelvane: \"round\" is no value for trayIconShape, which takes automatic, wide or "
            "square\n");
}

TEST(SettingsCommand, ASettingThatCannotBeWrittenIsExitOne) {
  MemoryPreferences preferences;
  preferences.failsToSynchronize = true;
  EXPECT_EQ(run(preferences, {"set", "textOnlyIcon", "true"}).code, 1);
  EXPECT_EQ(run(preferences, {"get", "textOnlyIcon"}).code, 0);
}

}  // namespace
}  // namespace kelvane
