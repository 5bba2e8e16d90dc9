// The "Menu Bar" tab: what the item shows, and when. Main thread.
#pragma once

#include <string>

#include "settings/views/equal_width.h"
#include "settings/views/hide_while_on_power_setting.h"
#include "settings/views/picker_toggle_style.h"
#include "settings/views/show_on_hover_setting.h"

namespace kelvane {

class MenuBarSettings {
 public:
  explicit MenuBarSettings(const ViewContext& context);

  ViewNode body(ViewScope& scope, const std::string& id);

 private:
  ViewNode appearance(ViewScope& scope, const std::string& id) const;

  const ViewContext& context_;
  SettingProperty<bool> textOnlyIcon_;
  SettingProperty<bool> showPercentage_;
  EqualWidthWithBindingPreferenceKey labelWidth_;
  ShowOnHoverSetting showOnHover_;
  HideWhileOnPowerSetting hideWhileOnPower_;
};

}  // namespace kelvane
