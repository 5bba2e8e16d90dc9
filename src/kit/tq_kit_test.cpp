#include "kit/tq_kit.h"

#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

#include "platform/memory/memory_preferences.h"
#include "platform/memory/memory_run_loop.h"

namespace kelvane {
namespace {

TEST(TqKit, CountsEachLaunchAndDatesTheFirst) {
  MemoryRunLoop runLoop;
  MemoryPreferences preferences;
  const Date first = runLoop.now();
  for (std::int64_t launch = 1; launch <= 3; ++launch) {
    const TqKit kit(preferences, runLoop);
    EXPECT_EQ(kit.keys().launchCount.get(), launch);
    EXPECT_EQ(kit.keys().firstLaunchDate.get(), first);
    EXPECT_EQ(kit.isFirstLaunch(), launch == 1);
    runLoop.advance(60);
  }
  EXPECT_EQ(preferences.object("NSApplicationCrashOnExceptions"), PropertyValue(true));
  EXPECT_FALSE(preferences.stored().contains("NSApplicationCrashOnExceptions"));
}

TEST(TqKit, FirstLaunchByWhatEarlierOnesLeft) {
  const struct {
    PropertyDictionary stored;
    bool isFirst;
    std::int64_t count;
  } rows[] = {
      {{{"__hasLaunched__", true}}, false, 1},
      {{{"__hasLaunched__", false}}, true, 1},
      {{{"Tq_launchCount", "many"}}, true, 1},
      {{{"Tq_launchCount", 41}}, false, 42},
  };
  MemoryRunLoop runLoop;
  for (const auto& row : rows) {
    MemoryPreferences preferences(row.stored);
    const TqKit kit(preferences, runLoop);
    EXPECT_EQ(kit.isFirstLaunch(), row.isFirst);
    EXPECT_EQ(kit.keys().launchCount.get(), row.count);
  }
}

TEST(TqKitDeathTest, ACountThatCannotGrowEndsTheProcess) {
  MemoryRunLoop runLoop;
  MemoryPreferences preferences({{"Tq_launchCount", std::numeric_limits<std::int64_t>::max()}});
  EXPECT_DEATH(TqKit(preferences, runLoop), "too many launches");
}

}  // namespace
}  // namespace kelvane
