// The action "get battery details": a request without parameters, and its answer. Plain values, any
// thread.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "intents/battery_details.h"
#include "intents/intent.h"

namespace kelvane {

class GetBatteryDetailsIntent : public Intent {};

// The codes that every action's answer has; ours is always `success`.
enum class GetBatteryDetailsIntentResponseCode : std::int64_t {
  unspecified = 0,
  ready = 1,
  continueInApp = 2,
  inProgress = 3,
  success = 4,
  failure = 5,
  failureRequiringAppLaunch = 6,
};

// Absent for a number that is none of them.
constexpr std::optional<GetBatteryDetailsIntentResponseCode> responseCodeOf(std::int64_t rawValue) {
  if (rawValue < 0 || rawValue > 6) return std::nullopt;
  return static_cast<GetBatteryDetailsIntentResponseCode>(rawValue);
}

struct GetBatteryDetailsIntentResponse : IntentResponse {
  GetBatteryDetailsIntentResponse(GetBatteryDetailsIntentResponseCode responseCode,
                                  std::optional<std::string> activity)
      : IntentResponse{std::move(activity)}, code(responseCode) {}

  GetBatteryDetailsIntentResponseCode code;
  std::optional<BatteryDetails> details;
};

// Whoever answers the action.
class GetBatteryDetailsIntentHandling {
 public:
  using Completion = std::function<void(const GetBatteryDetailsIntentResponse&)>;
  virtual ~GetBatteryDetailsIntentHandling() = default;

  // Returns at once and calls `completion` later, once. Any thread may call; the handler need not
  // live until then.
  virtual void handleGetBatteryDetails(const GetBatteryDetailsIntent& intent,
                                       Completion completion) = 0;
};

}  // namespace kelvane
