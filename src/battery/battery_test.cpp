#include "battery/battery.h"

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_power.h"
#include "platform/memory/memory_run_loop.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;

class BatteryTest : public ::testing::Test {
 protected:
  void set(const MemoryBattery& state) { state.apply(registry, powerSources); }

  MemoryDeviceRegistry registry;
  MemoryPowerSources powerSources;
  MemoryRunLoop loop;
};

TEST_F(BatteryTest, NothingReadableIsAFullBatteryOnPower) {
  registry.hasBattery = false;
  powerSources.estimate = kTimeRemainingUnlimited;
  Battery battery(registry, powerSources, loop);
  EXPECT_EQ(battery.openService(), ServiceStatus::notFound);
  EXPECT_TRUE(battery.isPowerAdapterConnected());
  EXPECT_EQ(battery.externalConnected(), std::nullopt);
  EXPECT_FALSE(battery.isCharging());
  EXPECT_EQ(battery.powerSourceName(), "Power Adapter");
  EXPECT_EQ(battery.percentage(), 1.0);
  EXPECT_EQ(battery.batteryHealth(), "Good");
  EXPECT_EQ(battery.healthWord(), std::nullopt);
  EXPECT_TRUE(std::isnan(battery.healthRatio()));
  EXPECT_EQ(battery.timeRemaining(), 0);
  EXPECT_EQ(battery.timeRemainingText(), "0:00");
}

TEST_F(BatteryTest, PropertiesOfAnotherTypeCountAsAbsent) {
  registry.properties = {{"ExternalConnected", "no"},
                         {"IsCharging", 1},
                         {"MaxCapacity", "5000"},
                         {"DesignCapacity", 5000}};
  powerSources.sources = {
      {{"Current Capacity", "57"}, {"Max Capacity", 100}, {"BatteryHealth", 3}}};
  const Battery battery(registry, powerSources, loop);
  EXPECT_TRUE(battery.isPowerAdapterConnected());
  EXPECT_FALSE(battery.isCharging());
  EXPECT_EQ(battery.healthRatio(), 0.0);
  EXPECT_EQ(battery.percentage(), 1.0);
  EXPECT_EQ(battery.batteryHealth(), "Good");
}

TEST_F(BatteryTest, ServiceIsOpenedOnceAndItsHandleClearedBeforeTheRelease) {
  {
    Battery battery(registry, powerSources, loop);
    EXPECT_EQ(battery.openService(), ServiceStatus::stillOpen);
  }
  EXPECT_THAT(registry.released, ElementsAre(ServiceHandle{0}));
}

TEST_F(BatteryTest, OnlyTheFirstPowerSourceCounts) {
  set({.percent = 57});
  powerSources.sources.push_back({{"Current Capacity", 9}, {"Max Capacity", 100}});
  const Battery battery(registry, powerSources, loop);
  EXPECT_EQ(battery.percentage(), 0.57);
}

TEST_F(BatteryTest, ChargeFraction) {
  struct Row {
    std::int64_t current, maximum;
    double expected;
  };
  for (const Row& row : {Row{0, 100, 0.0}, Row{0, 0, 0.0}, Row{-3, 100, 0.0}, Row{1, 100, 0.01},
                         Row{20, 100, 0.2}, Row{100, 100, 1.0}, Row{104, 100, 1.04}}) {
    powerSources.sources = {{{"Current Capacity", row.current}, {"Max Capacity", row.maximum}}};
    const Battery battery(registry, powerSources, loop);
    EXPECT_EQ(battery.percentage(), row.expected) << row.current;
  }
}

TEST_F(BatteryTest, HealthVerdict) {
  for (const auto& [word, expected] : std::vector<std::pair<std::string, std::string>>{
           {"Good", "Good"}, {"Fair", "Fair"}, {"Poor", "Poor"}, {"Check Battery", "Good"}}) {
    set({.health = word});
    EXPECT_EQ(Battery(registry, powerSources, loop).batteryHealth(), expected);
  }
}

TEST_F(BatteryTest, TimeOnBattery) {
  struct Row {
    double estimate;
    int percent, maxCapacity;
    std::int64_t minutes;
    std::string text;
  };
  const Row rows[] = {
      {-1, 50, 6000, 150, "…"},        // a draw of 1200 mA is assumed
      {-1, 0, 6000, 0, "…"},           //
      {7260, 50, 6000, 121, "2:01"},   //
      {7319, 50, 6000, 121, "2:01"},   // truncated
      {7500, 50, 6000, 125, "2:05"},   //
      {0, 50, 6000, 0, "0:00"},        //
      {-7, 50, 6000, 0, "0:00"},       //
      {59, 50, 6000, 0, "0:00"},       //
      {35940, 50, 6000, 599, "9:59"},  //
      {36000, 50, 6000, 600, "10h"},   //
      {39600, 50, 6000, 660, "11h"},   //
      {72000, 50, 6000, 1200, "20h"},  // ten hours come before twenty
      {90000, 50, 6000, 1500, "25h"},
  };
  for (const Row& row : rows) {
    set({.percent = row.percent, .estimate = row.estimate, .maxCapacity = row.maxCapacity});
    const Battery battery(registry, powerSources, loop);
    EXPECT_EQ(battery.timeRemaining(), row.minutes) << row.estimate;
    EXPECT_EQ(battery.timeRemainingText(), row.text) << row.estimate;
  }
}

TEST_F(BatteryTest, TimeUntilFull) {
  struct Row {
    int percent, registryMinutes;
    std::int64_t minutes;
  };
  const Row rows[] = {
      {50, 45, 45},    {50, 599, 599},  {50, 600, 90},   {96, 65535, 28}, {95, 65535, 36},
      {92, 65535, 28}, {90, 65535, 35}, {89, 65535, 19}, {15, 20, 153},   {15, 30, 153},
      {15, 31, 31},    {20, 30, 144},   {21, 30, 30},    {50, 0, 0},      {100, 65535, 0},
  };
  for (const Row& row : rows) {
    set({.percent = row.percent, .isOnPower = true, .minutesUntilFull = row.registryMinutes});
    EXPECT_EQ(Battery(registry, powerSources, loop).timeRemaining(), row.minutes)
        << row.percent << " " << row.registryMinutes;
  }
}

TEST_F(BatteryTest, ATimeThatNoIntegerHoldsEndsTheProcess) {
  set({});
  powerSources.estimate = std::numeric_limits<double>::infinity();
  const Battery battery(registry, powerSources, loop);
  EXPECT_DEATH(battery.timeRemaining(), "fatal error: a time does not fit");
}

class BatteryChangeTest : public BatteryTest {
 protected:
  struct Seen {
    bool adapterDidChange, previousConnected;
    double previousFraction;
    bool operator==(const Seen&) const = default;
  };
  void change(const MemoryBattery& state) {
    set(state);
    powerSources.notify();
    loop.run();
  }
  Subscription watch(Battery& battery) {
    return battery.didChangePublisher().dropFirst().subscribe([&](bool flipped) {
      seen.push_back(
          {flipped, battery.previousIsPowerAdapterConnected(), battery.previousPercentage()});
    });
  }
  std::vector<Seen> seen;
};

TEST_F(BatteryChangeTest, SubscribersSeeThePreviousValuesAndEveryNotificationIsAnEvent) {
  set({.percent = 21});
  Battery battery(registry, powerSources, loop);
  const auto subscription = watch(battery);
  change({.percent = 20});
  change({.percent = 20});
  change({.percent = 20, .isOnPower = true});
  change({.percent = 21, .isOnPower = true});
  EXPECT_THAT(seen, ElementsAre(Seen{false, false, 0.21}, Seen{false, false, 0.20},
                                Seen{true, false, 0.20}, Seen{false, true, 0.20}));
  EXPECT_EQ(battery.previousPercentage(), 0.21);
}

TEST_F(BatteryChangeTest, AnAdapterPropertyThatVanishesCountsAsPluggedIn) {
  set({});
  Battery battery(registry, powerSources, loop);
  const auto subscription = watch(battery);
  registry.properties.erase("ExternalConnected");
  powerSources.notify();
  loop.run();
  EXPECT_THAT(seen, ElementsAre(Seen{true, false, 0.57}));
}

TEST_F(BatteryChangeTest, NothingArrivesDuringAModalAlertAndTheRestIsOneEvent) {
  set({.percent = 50});
  Battery battery(registry, powerSources, loop);
  const auto subscription = watch(battery);
  {
    const RunLoopQueue::ModeScope modal(loop, RunLoopMode::modal);
    change({.percent = 49});
    change({.percent = 48, .isOnPower = true});
    EXPECT_TRUE(seen.empty());
  }
  loop.run();
  EXPECT_THAT(seen, ElementsAre(Seen{true, false, 0.50}));
}

TEST_F(BatteryChangeTest, ObservingAgainReplacesTheSourceAndTheEndRemovesIt) {
  set({});
  auto battery = std::make_unique<Battery>(registry, powerSources, loop);
  auto subscription = watch(*battery);
  battery->startObserving();
  change({.percent = 56});
  EXPECT_EQ(seen.size(), 1U);
  battery.reset();
  change({.percent = 55});
  EXPECT_EQ(seen.size(), 1U);
}

}  // namespace
}  // namespace kelvane
