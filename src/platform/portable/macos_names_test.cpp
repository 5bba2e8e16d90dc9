#include "platform/portable/macos_names.h"

#include <gtest/gtest.h>

namespace kelvane {
namespace {

TEST(MacosNames, OfEachVersion) {
  const struct {
    SystemVersion version;
    const char *description, *pane;
  } rows[] = {
      {{10, 15, 7}, "macOS 10.15.7", "EnergySaver"},
      {{11, 0, 0}, "macOS 11.0", "Battery"},
      {{11, 7, 10}, "macOS 11.7.10", "Battery"},
      {{12, 0, 1}, "macOS 12.0.1", "Battery"},
  };
  for (const auto& [version, description, pane] : rows) {
    EXPECT_EQ(macOSDescription(version), description);
    EXPECT_EQ(batteryPreferencePane(version),
              std::string("/System/Library/PreferencePanes/") + pane + ".prefPane");
  }
}

}  // namespace
}  // namespace kelvane
