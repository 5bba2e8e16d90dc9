// What an older version may have left as levels, and as switches.
#include <cmath>
#include <string>

#include "platform/memory/memory_preferences.h"
#include "settings/migrations.h"
#include "settings/settings_keys.h"
#include "tests/fuzz/fuzzing.h"

using namespace kelvane;

namespace {

bool areNumbers(const Levels& levels) {
  for (const double level : levels)
    if (std::isnan(level)) return false;
  return true;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(bytesOf(data, size));
  MemoryPreferences preferences({{"notifyAtPercentages", text},
                                 {"notifyAtPercentagesOnPower", "[0.5]"},
                                 {"notifyAtPercentagesOnBattery", text},
                                 {"showPercentage", text}});
  const SettingsKeys keys(preferences);
  migrate(preferences, keys);
  const PropertyDictionary migrated = preferences.written();
  require(migrated.contains("notifyAtPercentages"), "no key is removed");
  require(keys.notifyAtPercentagesOnPower.get() == keys.notifyAtPercentages.get() &&
              keys.notifyAtPercentagesOnBattery.get() == keys.notifyAtPercentages.get(),
          "both lists are what the one list was");
  require(areNumbers(keys.notifyAtPercentages.get()), "levels are numbers");
  (void)keys.showPercentage.get();

  migrate(preferences, keys);
  require(preferences.written() == migrated, "a second migration changes nothing");
  return 0;
}
