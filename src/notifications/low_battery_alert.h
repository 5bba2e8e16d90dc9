// The alert that the battery is about to run out. Main thread; the parts of the platform and the
// battery outlive it.
//
// It is shown at most once in a discharge, stays until the user dismisses it or power returns, and
// may be shown again only after a charge above 20 %.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "platform/picture.h"
#include "platform/property_value.h"
#include "platform/run_loop.h"
#include "platform/windows.h"

namespace kelvane {

class Battery;

class LowBatteryAlert {
 public:
  // `icon` is asked for each time the alert is shown.
  LowBatteryAlert(const Battery& battery, Windows& windows, RunLoop& runLoop,
                  std::function<Picture()> icon);
  LowBatteryAlert(const LowBatteryAlert&) = delete;
  LowBatteryAlert& operator=(const LowBatteryAlert&) = delete;

  // Shows the alert if it is time to. `lastTimeShown` is the caller's memory between checks; it
  // outlives this object and is cleared by a charge above 20 %, after the alert if one is shown.
  void check(std::optional<Date>& lastTimeShown);

 private:
  bool isTimeToShow(const std::optional<Date>& lastTimeShown) const;
  void show(std::optional<Date>& lastTimeShown);
  void clearWhenCharged(std::optional<Date>& lastTimeShown) const;

  const Battery& battery_;
  Windows& windows_;
  RunLoop& runLoop_;
  std::function<Picture()> icon_;
  std::unique_ptr<AlertHandle> alert_;  // while it is shown
  std::unique_ptr<Timer> adapterPoll_;
  // Lets an alert that outlives this object find out.
  std::shared_ptr<bool> isAlive_ = std::make_shared<bool>(true);
};

}  // namespace kelvane
