#include "platform/macos/power/iops_power_sources.h"

#include <memory>

#include <doubles/doubles.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/power/iokit_registry.h"
#include "platform/macos/run_loop/mac_run_loop.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(IopsPowerSources, DescribesEachSourceInOrder) {
  IopsPowerSources sources;
  EXPECT_THAT(sources.descriptions(), IsEmpty());
  doubles::power().sources = @{
    @"battery" : @{@"Type" : @"InternalBattery", @"Is Present" : @YES, @"Current Capacity" : @57},
    @"vanished" : @1,
    @"ups" : @{@"Type" : @"UPS"},
  };
  EXPECT_THAT(sources.descriptions(),
              ElementsAre(
                  PropertyDictionary{
                      {"Type", "InternalBattery"}, {"Is Present", true}, {"Current Capacity", 57}},
                  PropertyDictionary(), PropertyDictionary{{"Type", "UPS"}}));
}

TEST(IopsPowerSources, TellsTheSystemsOwnEstimates) {
  IopsPowerSources sources;
  for (const double seconds : {-1.0, -2.0, 3600.0}) {
    doubles::power().timeRemaining = seconds;
    EXPECT_EQ(sources.timeRemainingEstimate(), seconds);
  }
  constexpr std::pair<int, BatteryWarningLevel> kLevels[] = {{0, BatteryWarningLevel::none},
                                                             {1, BatteryWarningLevel::none},
                                                             {2, BatteryWarningLevel::early},
                                                             {3, BatteryWarningLevel::final},
                                                             {9, BatteryWarningLevel::none}};
  for (const auto& [level, expected] : kLevels) {
    doubles::power().warningLevel = level;
    EXPECT_EQ(sources.warningLevel(), expected) << level;
  }
}

class PowerNotificationTest : public ::testing::Test {
 protected:
  IopsPowerSources sources;
  MacRunLoop loop;
  int events = 0;
  std::shared_ptr<RunLoopSource> source = sources.makeNotificationSource([this] { ++events; });
};

TEST_F(PowerNotificationTest, IsHeardInTheModeItWasAddedForOnly) {
  doubles::powerChanged();
  doubles::runFor(1);
  EXPECT_EQ(events, 0) << "before it is added";
  loop.addSource(source, RunLoopMode::standard);
  loop.addSource(source, RunLoopMode::standard);
  doubles::runFor(1);
  EXPECT_EQ(events, 1);
  doubles::powerChanged();
  doubles::runOnce(NSModalPanelRunLoopMode);
  doubles::runOnce(NSEventTrackingRunLoopMode);
  EXPECT_EQ(events, 1) << "in another mode";
  doubles::runFor(1);
  EXPECT_EQ(events, 2);
  loop.removeSource(source, RunLoopMode::modal);
  doubles::powerChanged();
  doubles::runFor(1);
  EXPECT_EQ(events, 3) << "removed from a mode it was not in";
  loop.removeSource(source, RunLoopMode::standard);
  doubles::powerChanged();
  doubles::runFor(1);
  EXPECT_EQ(events, 3) << "removed";
}

TEST_F(PowerNotificationTest, TheCallbackMayDropItsOwnSource) {
  auto own = std::make_shared<int>(1);
  auto dropped = sources.makeNotificationSource([this, own] {
    loop.removeSource(source, RunLoopMode::standard);
    source.reset();
    events += *own;
  });
  own.reset();
  source = std::move(dropped);
  loop.addSource(source, RunLoopMode::standard);
  doubles::powerChanged();
  doubles::runFor(1);
  EXPECT_EQ(events, 1);
  EXPECT_EQ(doubles::powerListeners(), 0);
}

TEST_F(PowerNotificationTest, ALoopThatEndsLetsGoOfItsSources) {
  std::weak_ptr<RunLoopSource> weak = source;
  {
    MacRunLoop brief;
    brief.addSource(std::move(source), RunLoopMode::standard);
    EXPECT_FALSE(weak.expired());
  }
  EXPECT_TRUE(weak.expired());
  doubles::powerChanged();
  doubles::runFor(1);
  EXPECT_EQ(events, 0);
}

TEST(IokitRegistry, ReadsPropertiesOfTheBatteryAndGivesItBack) {
  IokitRegistry registry;
  EXPECT_EQ(registry.findService("AppleSmartBattery"), 0U);
  doubles::power().battery = @{@"ExternalConnected" : @NO, @"MaxCapacity" : @4382};
  EXPECT_EQ(registry.findService("another"), 0U);
  const ServiceHandle battery = registry.findService("AppleSmartBattery");
  EXPECT_EQ(registry.property(battery, "ExternalConnected"), PropertyValue(false));
  EXPECT_EQ(registry.property(battery, "MaxCapacity"), PropertyValue(4382));
  EXPECT_EQ(registry.property(battery, "absent"), std::nullopt);
  EXPECT_EQ(registry.property(battery, "no UTF-8: \xff"), std::nullopt);
  EXPECT_EQ(registry.property(0, "MaxCapacity"), std::nullopt);
  EXPECT_EQ(doubles::power().servicesHeld, 1);
  registry.release(battery);
  registry.release(0);
  EXPECT_EQ(doubles::power().servicesHeld, 0);
}

}  // namespace
}  // namespace kelvane
