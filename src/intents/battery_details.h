// The battery as scripts see it. Plain values, any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "intents/intent.h"

namespace kelvane {

enum class BatteryCondition : std::int64_t { unknown = 0, good = 1, fair = 2, poor = 3 };

// Absent for a number that is none of them.
constexpr std::optional<BatteryCondition> batteryConditionOf(std::int64_t rawValue) {
  if (rawValue < 0 || rawValue > 3) return std::nullopt;
  return static_cast<BatteryCondition>(rawValue);
}

struct BatteryConditionResolutionResult : IntentResolutionResult<BatteryCondition> {
  static BatteryConditionResolutionResult successWithResolvedBatteryCondition(
      BatteryCondition value) {
    return {{Outcome::success, {value}}};
  }
  static BatteryConditionResolutionResult confirmationRequiredWithBatteryConditionToConfirm(
      BatteryCondition value) {
    return {{Outcome::confirmationRequired, {value}}};
  }
};

// A property is absent when whoever answers does not tell it.
struct BatteryDetails : IntentObject {
  std::optional<bool> isPowerAdapterConnected;
  // Seconds, 0 or more: until full while on power, else until empty.
  std::optional<double> timeUntilFullOrDepleted;
  // Maximum over design capacity: 1.0 as new. May be infinite or not a number.
  std::optional<double> health;
  std::optional<BatteryCondition> condition;
};

struct BatteryDetailsResolutionResult : IntentResolutionResult<BatteryDetails> {
  static BatteryDetailsResolutionResult successWithResolvedBatteryDetails(BatteryDetails value) {
    return {{Outcome::success, {std::move(value)}}};
  }
  static BatteryDetailsResolutionResult disambiguationWithBatteryDetailssToDisambiguate(
      std::vector<BatteryDetails> values) {
    return {{Outcome::disambiguation, std::move(values)}};
  }
  static BatteryDetailsResolutionResult confirmationRequiredWithBatteryDetailsToConfirm(
      BatteryDetails value) {
    return {{Outcome::confirmationRequired, {std::move(value)}}};
  }
};

}  // namespace kelvane
