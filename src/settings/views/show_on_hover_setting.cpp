#include "settings/views/show_on_hover_setting.h"

#include <memory>

namespace kelvane {

ShowOnHoverSetting::ShowOnHoverSetting(const ViewContext& context)
    : context_(context), showPercentage_(context.settings.showPercentage, context.runLoop) {}

ViewNode ShowOnHoverSetting::body(ViewScope& scope, const std::string& id) const {
  scope.redrawOn(showPercentage_.observable().objectWillChange());
  const std::string other = showPercentage_.get() ? "time remaining" : "percentage";
  return settingToggle(
      scope,
      std::make_shared<SettingToggle>("Show " + other + " on hover",
                                      context_.settings.showTimeOrPercentageOnHover,
                                      context_.runLoop),
      id, "Show the " + other + " in a popover when your mouse is over the menu bar item.");
}

}  // namespace kelvane
