// The actions of automation as messages on the session bus, in both directions. Any thread.
#pragma once

#include <optional>

#include <glib.h>

#include "intents/get_battery_details_intent.h"

namespace kelvane {

// On the application's object: GetBatteryDetails() → (i code, a{sv} details), where
//   isPowerAdapterConnected  b
//   timeUntilFullOrDepleted  d, seconds
//   health                   d, a ratio; may be infinite or not a number
//   condition                s, one of `conditionWord`
// and what is not known is left out.
constexpr const char* kIntentsInterface = "org.kelvane.Kelvane.Intents";
constexpr const char* kGetBatteryDetails = "GetBatteryDetails";
constexpr const char* kBatteryDetailsType = "(ia{sv})";

constexpr const char* kIsPowerAdapterConnected = "isPowerAdapterConnected";
constexpr const char* kTimeUntilFullOrDepleted = "timeUntilFullOrDepleted";
constexpr const char* kHealth = "health";
constexpr const char* kCondition = "condition";

// "unknown", "good", "fair" or "poor".
const char* conditionWord(BatteryCondition condition);

// A floating tuple.
GVariant* messageOf(const GetBatteryDetailsIntentResponse& response);

// `message` is of the type above; the rest is the sender's word. Absent when it holds no such code,
// a property of another type or an unknown word. Properties that we don't know are ignored.
std::optional<GetBatteryDetailsIntentResponse> responseOf(GVariant* message);

}  // namespace kelvane
