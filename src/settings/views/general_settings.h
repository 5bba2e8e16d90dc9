// The "General" tab: starting at login and notifications. Main thread.
#pragma once

#include <string>

#include "settings/views/notify_at_percentages_setting.h"

namespace kelvane {

class GeneralSettings {
 public:
  explicit GeneralSettings(const ViewContext& context);

  ViewNode body(ViewScope& scope, const std::string& id);

 private:
  const ViewContext& context_;
  NotifyAtPercentagesSetting notifyAtPercentages_;
};

}  // namespace kelvane
