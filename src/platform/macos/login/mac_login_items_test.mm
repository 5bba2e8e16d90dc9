#include "platform/macos/login/mac_login_items.h"

#include <doubles/doubles.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvane {
namespace {

using ::testing::ElementsAre;

TEST(MacLoginItems, ReadsTheJobsOfTheUserAfresh) {
  MacLoginItems items;
  EXPECT_EQ(items.jobs(), std::nullopt);
  doubles::services().jobs = @[
    @{@"Label" : @"a",
      @"OnDemand" : @YES},
    @"odd", @{@"Label" : @"b"}
  ];
  EXPECT_THAT(*items.jobs(), ElementsAre(PropertyDictionary{{"Label", "a"}, {"OnDemand", true}},
                                         PropertyDictionary{{"Label", "b"}}));
}

TEST(MacLoginItems, TellsWhetherTheSystemAccepted) {
  MacLoginItems items;
  EXPECT_TRUE(items.setEnabled("a.helper", true));
  doubles::services().acceptsLoginItems = false;
  EXPECT_FALSE(items.setEnabled("a.helper", false));
  EXPECT_FALSE(items.setEnabled("\xff", true));
  EXPECT_THAT(doubles::services().log, ElementsAre("enable a.helper", "disable a.helper"));
}

}  // namespace
}  // namespace kelvane
