#include "kit/run_once.h"

#include <gtest/gtest.h>

#include "platform/memory/memory_preferences.h"

namespace kelvane {
namespace {

TEST(RunOnce, AnswersOnceAndTheMarkIsWrittenByThen) {
  MemoryPreferences preferences;
  EXPECT_TRUE(runOnce(preferences, "work"));
  EXPECT_EQ(preferences.written(), (PropertyDictionary{{"Tq_App_runOnce__work", true}}));
  EXPECT_FALSE(runOnce(preferences, "work"));
  EXPECT_TRUE(runOnce(preferences, "other"));

  MemoryPreferences full;
  full.failsToSynchronize = true;
  EXPECT_TRUE(runOnce(full, "work"));
  EXPECT_FALSE(runOnce(full, "work"));
}

}  // namespace
}  // namespace kelvane
