#include "programs/kelvane-commands/demo_script.h"

#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include "platform/memory/memory_preferences.h"
#include "programs/kelvane-commands/demo_page.h"
#include "programs/kelvane-commands/settings_command.h"

namespace kelvane {
namespace {

TEST(DemoScript, StepsHaveNamesOfTheirOwnAndSettingsThatExist) {
  std::set<std::string> names;
  MemoryPreferences preferences;
  for (const DemoStep& step : demoScript()) {
    EXPECT_TRUE(names.insert(step.name).second) << step.name;
    for (const auto& [key, value] : step.settings) {
      std::ostringstream out, errors;
      EXPECT_EQ(runSettingsCommand({"set", key, value}, preferences, out, errors), 0)
          << step.name << ": " << errors.str();
    }
  }
}

TEST(TerminalDrawing, TwoRowsToALineAndNoEmptyLines) {
  constexpr std::uint32_t X = 0xFF000000, o = 0;
  const Bitmap bitmap{3, 5, {o, o, o, o, o, o, X, o, X, X, X, o, o, o, X}};
  EXPECT_EQ(drawnInTerminal(bitmap), "    █▄▀\n      ▀\n");
}

}  // namespace
}  // namespace kelvane
