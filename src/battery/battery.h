// The laptop's battery: live readings, and an event for each change of a power source.
//
// Main thread only. One object for the whole process, owned by the application; the platform
// interfaces outlive it. Nothing is cached: each reading asks the platform when it is called, so
// two readings in a row may disagree. A reading never fails; what the platform does not tell has
// the fallback stated beside it. Properties of another type than expected count as absent.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "battery/battery_registry_key.h"
#include "platform/device_registry.h"
#include "platform/power_sources.h"
#include "platform/run_loop.h"
#include "reactive/subject.h"

namespace kelvane {

// Answers of `openService`, as the device registry numbers them.
enum class ServiceStatus : std::uint32_t {
  success = 0,
  stillOpen = 0xe00002d2,
  notFound = 0xe00002f0,
};

class Battery {
 public:
  // Opens the battery's service, remembers the present state and starts observing.
  Battery(DeviceRegistry& registry, PowerSources& powerSources, RunLoop& runLoop);
  ~Battery();
  Battery(const Battery&) = delete;
  Battery& operator=(const Battery&) = delete;

  ServiceStatus openService();

  // --- The device registry

  // Whether a power adapter is connected. Absent when the registry does not say.
  std::optional<bool> externalConnected() const;
  // The rule for everything that asks whether the machine is on power: absent counts as connected.
  bool isPowerAdapterConnected() const;
  bool isCharging() const;              // absent counts as not charging
  std::string powerSourceName() const;  // "Power Adapter" or "Battery"
  // Maximum over design capacity, an absent one counting as 0: may be infinite or not a number.
  double healthRatio() const;

  // --- The first power source

  // Charge fraction, normally 0.0 to 1.0, unrounded and not clamped; full when absent.
  double percentage() const;
  // The platform's verdict as it stands; absent when there is none.
  std::optional<std::string> healthWord() const;
  // "Good", "Fair" or "Poor"; anything else is "Good".
  std::string batteryHealth() const;

  // --- Time

  // The operating system's own estimate, in seconds, or one of its two sentinels.
  double timeRemainingEstimate() const { return powerSources_.timeRemainingEstimate(); }
  // Whole minutes until empty, or until full while on power.
  std::int64_t timeRemaining() const;
  // "2:05", "11h" from ten hours on, "…" while unknown.
  std::string timeRemainingText() const;

  BatteryWarningLevel warningLevel() const { return powerSources_.warningLevel(); }

  // --- Changes

  // Registers for changes of the power sources, in the loop's standard mode only. Called again, it
  // replaces the registration.
  void startObserving();

  // One value per notification of the platform: whether the adapter state flipped since the one
  // before. A new subscriber gets the last value (false at first) at once. Subscribers run inside
  // the notification and still see the previous values below as they were before it.
  const Publisher<bool>& didChangePublisher() const { return didChangePublisher_; }

  bool previousIsPowerAdapterConnected() const { return previousIsPowerAdapterConnected_; }
  double previousPercentage() const { return previousPercentage_; }

 private:
  std::optional<PropertyValue> property(BatteryRegistryKey key) const;
  double capacity(BatteryRegistryKey key) const;  // mAh; absent is 0
  // Empty without one. Valid until the next reading of the power sources.
  const PropertyDictionary& firstPowerSource() const;
  std::int64_t minutesUntilFull() const;
  void powerSourceDidChange();

  const std::string IOSERVICE_BATTERY_ID = "AppleSmartBattery";
  ServiceHandle service_ = 0;
  std::shared_ptr<RunLoopSource> notificationRunLoopSource_;
  bool previousIsPowerAdapterConnected_ = false;
  double previousPercentage_ = 0;
  CurrentValueSubject<bool> didChangeSuject_{false};
  Publisher<bool> didChangePublisher_ = didChangeSuject_.publisher();

  DeviceRegistry& registry_;
  PowerSources& powerSources_;
  RunLoop& runLoop_;
};

}  // namespace kelvane
