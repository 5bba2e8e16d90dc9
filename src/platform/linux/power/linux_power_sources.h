// The power sources on Linux: UPower, mirrored by its signals; while it is not there, or has not
// answered yet, the kernel's power supplies. Main thread.
//
// Two sources, one truth: the registry always reads the kernel's files, and UPower signals only
// after it has read the same files, so a notification never comes before what it tells of can be
// read. Files that a slow embedded controller changes later are read again by UPower in the seconds
// after each event, and by `SupplyWatch` without it; what they find is a notification of its own.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/linux/glib/system_bus.h"
#include "platform/linux/power/power_rules.h"
#include "platform/linux/power/supply_watch.h"
#include "platform/linux/power/turn_supplies.h"
#include "platform/linux/power/upower_mirror.h"
#include "platform/portable/run_loop_queue.h"
#include "platform/power_sources.h"

namespace kelvane {

struct PowerOptions {
  std::string directory = kSystemPowerSupplyDirectory;  // the tree of power supplies
  bool useUPower = true;  // false: of the system bus only waking up is heard
};

class LinuxPowerSources : public PowerSources {
 public:
  // Returns at once: the bus is asked in the background. `loop` outlives this.
  LinuxPowerSources(RunLoopQueue& loop, PowerOptions options);
  // Reads the supplies by what somebody else reads them by, too.
  LinuxPowerSources(RunLoopQueue& loop, PowerOptions options,
                    std::shared_ptr<TurnSupplies> supplies);
  ~LinuxPowerSources() override;
  LinuxPowerSources(const LinuxPowerSources&) = delete;
  LinuxPowerSources& operator=(const LinuxPowerSources&) = delete;

  const std::vector<PropertyDictionary>& descriptions() override;
  double timeRemainingEstimate() override;
  BatteryWarningLevel warningLevel() override;
  std::shared_ptr<RunLoopSource> makeNotificationSource(std::function<void()> callback) override;

  // Calls `done` once, in a later turn, as soon as it is settled whether UPower serves: for
  // commands that read once and end. It takes some milliseconds, or up to 5 seconds when UPower
  // hangs.
  void whenSettled(std::function<void()> done);

  // What serves now: UPower's word, or null for the kernel's files.
  const UPowerSnapshot* upower() const;

 private:
  // All that can be read at a moment, the registry included.
  struct Reading {
    PowerReadings sources;
    PropertyDictionary registry;
    bool operator==(const Reading&) const = default;
  };

  void connected(BusConnection* bus);
  void mirrorChanged();
  void settle();
  // Watches the kernel while that is what serves and somebody listens.
  void updateWatch();
  bool hasListeners();
  // Valid until the next call. Without UPower, whose word is whole, the estimate needs no more than
  // the supplies' state.
  const PowerReadings& readings(SupplyFields fields);
  // Afresh: what told of a change may have come in this very turn.
  Reading read();
  void signalIfChanged();
  void signal();

  RunLoopQueue& loop_;
  PowerOptions options_;
  std::shared_ptr<TurnSupplies> supplies_;
  std::optional<SystemBusRequest> busRequest_;
  std::unique_ptr<UPowerMirror> mirror_;
  std::unique_ptr<SignalSubscription> waking_;  // without a mirror, which hears it itself
  std::unique_ptr<SupplyWatch> watch_;
  std::vector<std::weak_ptr<QueueSource>> listeners_;
  std::vector<std::function<void()>> waiting_;
  PowerReadings readings_;
  bool isMirrorRead_ = false;  // `readings_` are of what is mirrored now and of this adapter
  std::optional<bool> isConnectedRead_;
  std::optional<Reading> lastRead_;  // while the kernel's files serve
  bool servedByUPower_ = false;
  bool isSettled_ = false;
};

}  // namespace kelvane
