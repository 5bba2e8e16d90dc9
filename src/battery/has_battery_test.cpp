#include "battery/has_battery.h"

#include <vector>

#include <gtest/gtest.h>

#include "platform/memory/memory_power.h"

namespace kelvane {
namespace {

TEST(HasBattery, NeedsTheLaptopsOwnBatteryInPlace) {
  const PropertyDictionary own{{"Type", "InternalBattery"}, {"Is Present", true}};
  const PropertyDictionary emptyBay{{"Type", "InternalBattery"}, {"Is Present", false}};
  const PropertyDictionary ups{{"Type", "UPS"}, {"Is Present", true}};
  const struct {
    std::vector<PropertyDictionary> sources;
    bool hasBattery;
  } rows[] = {
      {{}, false},
      {{own}, true},
      {{ups, own}, true},
      {{emptyBay}, false},
      {{ups}, false},
      {{emptyBay, ups}, false},  // both halves of the rule, of one source
      {{{{"Type", "InternalBattery"}}}, false},
      {{{{"Type", "InternalBattery"}, {"Is Present", 1}}}, false},
      {{{{"Is Present", true}}}, false},
  };
  for (const auto& row : rows) {
    MemoryPowerSources powerSources;
    powerSources.sources = row.sources;
    EXPECT_EQ(hasBattery(powerSources), row.hasBattery) << &row - rows;
  }
}

}  // namespace
}  // namespace kelvane
