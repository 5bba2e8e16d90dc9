// Showing on hover what the item doesn't show, named after it. Main thread.
#pragma once

#include <string>

#include "settings/views/view_context.h"
#include "settings/views/view_scope.h"
#include "store/setting_property.h"

namespace kelvane {

class ShowOnHoverSetting {
 public:
  explicit ShowOnHoverSetting(const ViewContext& context);

  ViewNode body(ViewScope& scope, const std::string& id) const;

 private:
  const ViewContext& context_;
  SettingProperty<bool> showPercentage_;
};

}  // namespace kelvane
