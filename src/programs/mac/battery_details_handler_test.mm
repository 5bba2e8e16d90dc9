#import "programs/mac/battery_details_handler.h"

#include <functional>
#include <limits>
#include <utility>

#include <doubles/doubles.h>
#include <gtest/gtest.h>

namespace kelvane {
namespace {

GetBatteryDetailsIntentResponse response(std::optional<BatteryDetails> details) {
  GetBatteryDetailsIntentResponse made(GetBatteryDetailsIntentResponseCode::success, std::nullopt);
  made.details = std::move(details);
  return made;
}

TEST(BatteryDetailsHandler, EveryPropertyReachesTheSystem) {
  BatteryDetails details;
  details.identifier = "batteryDetails";
  details.displayString = "Use \xE2\x80\x9Cthese\xE2\x80\x9D.";
  details.isPowerAdapterConnected = false;
  details.timeUntilFullOrDepleted = 5700.0;
  details.health = std::numeric_limits<double>::infinity();
  details.condition = BatteryCondition::poor;
  ::GetBatteryDetailsIntentResponse* made = systemResponse(response(details));
  EXPECT_EQ(made.code, GetBatteryDetailsIntentResponseCodeSuccess);
  EXPECT_EQ(made.userActivity, nil);
  EXPECT_STREQ(made.details.identifier.UTF8String, "batteryDetails");
  EXPECT_STREQ(made.details.displayString.UTF8String, "Use \xE2\x80\x9Cthese\xE2\x80\x9D.");
  EXPECT_EQ(made.details.pronunciationHint, nil);
  EXPECT_TRUE([made.details.isPowerAdapterConnected isEqual:@NO]);
  EXPECT_EQ(made.details.timeUntilFullOrDepleted.doubleValue, 5700.0);
  EXPECT_EQ(made.details.health.doubleValue, std::numeric_limits<double>::infinity());
  EXPECT_EQ(made.details.condition, BatteryConditionPoor);
}

TEST(BatteryDetailsHandler, WhatNobodyToldIsNil) {
  ::GetBatteryDetailsIntentResponse* made = systemResponse(response(BatteryDetails()));
  EXPECT_EQ(made.details.isPowerAdapterConnected, nil);
  EXPECT_EQ(made.details.timeUntilFullOrDepleted, nil);
  EXPECT_EQ(made.details.health, nil);
  EXPECT_EQ(made.details.condition, BatteryConditionUnknown);
  EXPECT_EQ(systemResponse(response(std::nullopt)).details, nil);
}

class LateHandler : public GetBatteryDetailsIntentHandling {
 public:
  explicit LateHandler(Completion& completion) : completion_(completion) {}
  void handleGetBatteryDetails(const GetBatteryDetailsIntent&, Completion completion) override {
    completion_ = std::move(completion);
  }

 private:
  Completion& completion_;
};

TEST(BatteryDetailsHandler, AnswersWhenTheSystemsCallIsLongOver) {
  GetBatteryDetailsIntentHandling::Completion completion;
  NSMutableArray* answers = [NSMutableArray arrayWithCapacity:1];
  @autoreleasepool {
    auto* handler = [[GetBatteryDetailsIntentHandler alloc]
        initWithHandler:std::make_unique<LateHandler>(completion)];
    [handler handleGetBatteryDetails:[[::GetBatteryDetailsIntent alloc] init]
                          completion:^(::GetBatteryDetailsIntentResponse* each) {
                            [answers addObject:each];
                          }];
  }
  EXPECT_EQ(answers.count, 0U);
  std::exchange(completion, nullptr)(response(std::nullopt));
  EXPECT_EQ([answers.firstObject code], GetBatteryDetailsIntentResponseCodeSuccess);
}

}  // namespace
}  // namespace kelvane
