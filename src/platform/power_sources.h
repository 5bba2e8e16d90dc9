// What the operating system knows of the computer's power. Main thread; no reading ever blocks.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "platform/property_value.h"
#include "platform/run_loop.h"

namespace kelvane {

// The operating system's own opinion on how urgent the charge is.
enum class BatteryWarningLevel { none = 1, early = 2, final = 3 };

// Two values of the time estimate that are no times.
inline constexpr double kTimeRemainingUnknown = -1.0;    // on battery, not known yet
inline constexpr double kTimeRemainingUnlimited = -2.0;  // on external power

class PowerSources {
 public:
  virtual ~PowerSources() = default;

  // One dictionary per power source, the laptop's own battery first; empty when there are none. A
  // property that is not known is missing. "Type" ("InternalBattery", "UPS"), "Is Present"
  // (boolean), "Current Capacity" and "Max Capacity" (whole; a percentage and 100), "BatteryHealth"
  // ("Good", "Fair", "Poor"). Valid until the next call of anything here.
  virtual const std::vector<PropertyDictionary>& descriptions() = 0;

  // Seconds until the battery is empty, or one of the two constants above.
  virtual double timeRemainingEstimate() = 0;

  virtual BatteryWarningLevel warningLevel() = 0;

  // A source that calls `callback` after anything about a power source has changed; a platform may
  // make one call of changes that come together. It works while it is added to the run loop.
  virtual std::shared_ptr<RunLoopSource> makeNotificationSource(std::function<void()> callback) = 0;
};

}  // namespace kelvane
