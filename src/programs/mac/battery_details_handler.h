// Answers the system's automation with what the application's own handler says. Made for one
// request; any thread may call.
#pragma once

#include <memory>

#include "intents/get_battery_details_intent.h"
#import "programs/mac/battery_details_intent.h"

API_AVAILABLE(macos(11.0))
@interface GetBatteryDetailsIntentHandler : NSObject <GetBatteryDetailsIntentHandling>
- (instancetype)initWithHandler:(std::unique_ptr<kelvane::GetBatteryDetailsIntentHandling>)handler;
@end

namespace kelvane {

// The application's answer as the system's object.
API_AVAILABLE(macos(11.0))
::GetBatteryDetailsIntentResponse* systemResponse(const GetBatteryDetailsIntentResponse& response);

}  // namespace kelvane
