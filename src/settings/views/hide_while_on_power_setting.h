// Hiding the item while on power, with a warning when that is switched on. Main thread.
#pragma once

#include <string>

#include "settings/views/view_context.h"
#include "settings/views/view_scope.h"

namespace kelvane {

class HideWhileOnPowerSetting {
 public:
  explicit HideWhileOnPowerSetting(const ViewContext& context);

  ViewNode body(ViewScope& scope, const std::string& id);

 private:
  const ViewContext& context_;
  ViewState<bool> isShowingAlert_;
};

}  // namespace kelvane
