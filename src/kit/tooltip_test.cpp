#include "kit/tooltip.h"

#include <gtest/gtest.h>

#include "platform/memory/memory_desktop.h"
#include "platform/memory/memory_preferences.h"
#include "platform/memory/memory_run_loop.h"

namespace kelvane {
namespace {

TEST(Tooltip, OnlyOnceIsOnceForItsIdentifierAndAllPreferences) {
  MemoryRunLoop runLoop;
  MemoryWindows windows(runLoop);
  MemoryPreferences preferences;
  const auto shows = [&](const char* identifier, bool showOnlyOnce) {
    Tooltip tooltip(identifier, showOnlyOnce, true, windows, preferences);
    return tooltip.show({.text = "text"}, [] {});
  };
  EXPECT_TRUE(shows("a", true));
  EXPECT_FALSE(shows("a", true));
  EXPECT_TRUE(shows("b", true));
  EXPECT_TRUE(shows("a", false));
  EXPECT_TRUE(windows.popovers.back()->content.showsWithoutItem);
}

}  // namespace
}  // namespace kelvane
