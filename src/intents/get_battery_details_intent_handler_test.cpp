#include "intents/get_battery_details_intent_handler.h"

#include <cmath>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "battery/battery.h"
#include "platform/memory/memory_power.h"
#include "platform/memory/memory_run_loop.h"

namespace kelvane {
namespace {

using Code = GetBatteryDetailsIntentResponseCode;

class GetBatteryDetailsTest : public ::testing::Test {
 protected:
  std::unique_ptr<GetBatteryDetailsIntentHandling> handlerFor(const Intent& asked) {
    return makeHandlerFor(asked, loop, [this]() -> const Battery& {
      batteryThread = std::this_thread::get_id();
      return battery;
    });
  }
  BatteryDetails details() {
    std::optional<GetBatteryDetailsIntentResponse> answer;
    handlerFor(intent)->handleGetBatteryDetails(intent, [&](const auto& response) {
      EXPECT_FALSE(answer);
      answer = response;
    });
    loop.run();
    EXPECT_EQ(answer.value().code, Code::success);
    EXPECT_EQ(answer->userActivity, std::nullopt);
    return answer->details.value();
  }

  MemoryDeviceRegistry registry;
  MemoryPowerSources powerSources;
  MemoryRunLoop loop;
  Battery battery{registry, powerSources, loop};
  const GetBatteryDetailsIntent intent;
  std::thread::id batteryThread;
};

TEST_F(GetBatteryDetailsTest, TellsTheBattery) {
  MemoryBattery{.estimate = 5735, .maxCapacity = 4200, .health = "Poor"}.apply(registry,
                                                                               powerSources);
  BatteryDetails told = details();
  EXPECT_EQ(told.identifier, "batteryDetails");
  EXPECT_EQ(told.displayString,
            "Use the individual properties, for example, with the \u201CShow Result\u201D or "
            "\u201CIf\u201D actions.");
  EXPECT_EQ(told.pronunciationHint, std::nullopt);
  EXPECT_EQ(told.isPowerAdapterConnected, false);
  EXPECT_EQ(told.timeUntilFullOrDepleted, 5700);  // 95 whole minutes
  EXPECT_EQ(told.health, 0.75);
  EXPECT_EQ(told.condition, BatteryCondition::poor);

  MemoryBattery{.isOnPower = true, .minutesUntilFull = 45, .designCapacity = 0}.apply(registry,
                                                                                      powerSources);
  told = details();
  EXPECT_EQ(told.isPowerAdapterConnected, true);
  EXPECT_EQ(told.timeUntilFullOrDepleted, 2700);
  EXPECT_TRUE(std::isinf(told.health.value()));
}

TEST_F(GetBatteryDetailsTest, WithoutABatteryThereIsStillAnAnswer) {
  registry.hasBattery = false;
  powerSources.estimate = kTimeRemainingUnlimited;
  const BatteryDetails told = details();
  EXPECT_EQ(told.isPowerAdapterConnected, true);
  EXPECT_EQ(told.timeUntilFullOrDepleted, 0);
  EXPECT_TRUE(std::isnan(told.health.value()));
  EXPECT_EQ(told.condition, BatteryCondition::unknown);
}

TEST_F(GetBatteryDetailsTest, Condition) {
  struct Row {
    PropertyValue word;
    BatteryCondition condition;
  };
  for (const Row& row :
       {Row{"Good", BatteryCondition::good}, Row{"Fair", BatteryCondition::fair},
        Row{"Poor", BatteryCondition::poor}, Row{"Check Battery", BatteryCondition::good},
        Row{"fair", BatteryCondition::good}, Row{"", BatteryCondition::good},
        Row{3, BatteryCondition::unknown}}) {
    powerSources.sources = {{{"BatteryHealth", row.word}}};
    EXPECT_EQ(details().condition, row.condition);
  }
}

TEST_F(GetBatteryDetailsTest, AskedOnAnotherThreadItReadsOnTheMainOneWithoutTheHandler) {
  std::thread::id completionThread;
  std::thread([&] {
    handlerFor(intent)->handleGetBatteryDetails(
        intent, [&](const auto&) { completionThread = std::this_thread::get_id(); });
  }).join();
  EXPECT_EQ(completionThread, std::thread::id());
  loop.run();
  EXPECT_EQ(completionThread, std::this_thread::get_id());
  EXPECT_EQ(batteryThread, std::this_thread::get_id());
}

TEST_F(GetBatteryDetailsTest, AnotherIntentHasNoHandler) {
  class OtherIntent : public Intent {};
  EXPECT_EQ(handlerFor(OtherIntent()), nullptr);
  EXPECT_EQ(handlerFor(Intent()), nullptr);
}

TEST(GetBatteryDetailsTypes, OtherNumbersAreNoCodeAndNoCondition) {
  EXPECT_EQ(responseCodeOf(0), Code::unspecified);
  EXPECT_EQ(responseCodeOf(6), Code::failureRequiringAppLaunch);
  EXPECT_EQ(batteryConditionOf(0), BatteryCondition::unknown);
  EXPECT_EQ(batteryConditionOf(3), BatteryCondition::poor);
  for (const std::int64_t other : {INT64_MIN, std::int64_t{-1}, std::int64_t{7}, INT64_MAX})
    EXPECT_FALSE(responseCodeOf(other) || batteryConditionOf(other)) << other;
  EXPECT_EQ(batteryConditionOf(4), std::nullopt);
}

}  // namespace
}  // namespace kelvane
