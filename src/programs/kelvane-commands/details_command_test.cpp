#include "programs/kelvane-commands/details_command.h"

#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "platform/portable/text_formats.h"

namespace kelvane {
namespace {

TEST(DetailsCommand, TextAndJson) {
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();
  struct Row {
    std::optional<bool> isConnected;
    std::optional<double> time, health;
    std::optional<BatteryCondition> condition;
    std::string text, json;
  };
  const Row rows[] = {
      {false, 5700, 0.75, BatteryCondition::fair,
       "Power adapter: not connected\nTime until empty: 1h 35m\nHealth: 75%\nCondition: fair",
       R"({"isPowerAdapterConnected":false,"timeUntilFullOrDepleted":5700.0,"health":0.75,)"
       R"("condition":"fair"})"},
      {true, kInfinity, kNoNumber, BatteryCondition::unknown,
       "Power adapter: connected\nTime until full: unknown\nHealth: unknown\nCondition: unknown",
       R"({"isPowerAdapterConnected":true,"timeUntilFullOrDepleted":null,"health":null,)"
       R"("condition":"unknown"})"},
      {std::nullopt, std::nullopt, std::nullopt, std::nullopt,
       "Power adapter: unknown\nTime until full or empty: unknown\nHealth: unknown\n"
       "Condition: unknown",
       R"({"isPowerAdapterConnected":null,"timeUntilFullOrDepleted":null,"health":null,)"
       R"("condition":null})"},
  };
  PortableTextFormats formats{{}};
  for (const Row& row : rows) {
    BatteryDetails details;
    details.isPowerAdapterConnected = row.isConnected;
    details.timeUntilFullOrDepleted = row.time;
    details.health = row.health;
    details.condition = row.condition;
    EXPECT_EQ(plainTextOf(details, formats), row.text);
    EXPECT_EQ(jsonOf(details), row.json);
  }
}

}  // namespace
}  // namespace kelvane
