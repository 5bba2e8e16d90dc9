// The system's own list of power sources. Main thread; every call reads afresh.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "platform/power_sources.h"

namespace kelvane {

class IopsPowerSources : public PowerSources {
 public:
  // In the system's order; a source that has no description is an empty dictionary.
  const std::vector<PropertyDictionary>& descriptions() override;
  double timeRemainingEstimate() override;
  BatteryWarningLevel warningLevel() override;
  // For `MacRunLoop`. While its mode is another one, the system itself holds back what it has to
  // tell.
  std::shared_ptr<RunLoopSource> makeNotificationSource(std::function<void()> callback) override;

 private:
  std::vector<PropertyDictionary> descriptions_;  // as last read, for whoever asked
};

}  // namespace kelvane
