// The greeting on the very first launch: an alert, and once that is dismissed a popover at the
// item, which shakes. Main thread; what it is made from outlives it.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "kit/tooltip.h"
#include "platform/platform.h"
#include "platform/run_loop.h"
#include "platform/status_bar.h"
#include "platform/windows.h"

namespace kelvane {

class Welcome {
 public:
  // `isFirstLaunch` decides whether there is a greeting at all.
  Welcome(const Platform& platform, std::string applicationName, bool isFirstLaunch);
  ~Welcome();
  Welcome(const Welcome&) = delete;
  Welcome& operator=(const Welcome&) = delete;

  // Shows the alert, and the popover at `statusItem` when it has been dismissed. The item outlives
  // this object.
  void showWelcome(StatusItem& statusItem);

 private:
  void showWelcomePopover(StatusItem& statusItem);
  // Once, whoever closes the popover first: the click, the timer or the platform.
  void closeWelcomePopover();

  Platform platform_;
  const std::string applicationName_;
  const bool isFirstLaunch_;
  std::unique_ptr<AlertHandle> alert_;
  // While the popover is shown.
  std::unique_ptr<Tooltip> tooltip_;
  std::unique_ptr<StatusItemObservation> clicks_;
  std::unique_ptr<Timer> closing_;
  // Tells what was queued that this is still there.
  std::shared_ptr<bool> isAlive_ = std::make_shared<bool>(true);
};

}  // namespace kelvane
