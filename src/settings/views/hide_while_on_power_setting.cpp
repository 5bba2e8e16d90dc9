#include "settings/views/hide_while_on_power_setting.h"

#include <memory>
#include <utility>

namespace kelvane {

using Kind = ViewNode::Kind;

HideWhileOnPowerSetting::HideWhileOnPowerSetting(const ViewContext& context)
    : context_(context), isShowingAlert_(context, false) {}

ViewNode HideWhileOnPowerSetting::body(ViewScope& scope, const std::string& id) {
  auto toggle =
      std::make_shared<SettingToggle>("Hide while on power", context_.settings.hideIconWhenOnPower,
                                      context_.runLoop, [this](bool isOn) {
                                        if (isOn) isShowingAlert_.set(true);
                                        context_.applyVisibility();
                                      });
  ViewNode stack = makeNode(Kind::verticalStack, id);
  stack.children.push_back(settingToggle(scope, std::move(toggle), id + "/toggle",
                                         "Hides the menu bar item while the power is plugged in."));
  if (!isShowingAlert_.get()) return stack;

  ViewNode alert = makeNode(Kind::alert, id + "/alert",
                            "Kelvane will be hidden while the power adapter is connected.");
  alert.children.push_back(makeNode(
      Kind::text, alert.id + "/message",
      "The menu bar item position is not preserved when the item is shown again. This is a macOS "
      "bug and it's not possible to work around it…\n\nTo access the app, either disconnect the "
      "power adapter or relaunch Kelvane to reveal the icon for 5 seconds."));
  scope.onPress(alert, [this] { isShowingAlert_.set(false); });
  stack.children.push_back(std::move(alert));
  return stack;
}

}  // namespace kelvane
