#include "settings/views/menu_bar_settings.h"

#include <memory>
#include <utility>

namespace kelvane {
namespace {

using Kind = ViewNode::Kind;

constexpr double kShowPadding = 16;
constexpr double kTypePadding = 2;

ViewNode picker(ViewScope& scope, const std::string& id, const std::string& label,
                const SettingProperty<bool>& property, const PickerToggleStyle& style) {
  scope.redrawOn(property.observable().objectWillChange());
  return style.body(
      scope, id, label,
      {[property] { return property.get(); }, [property](bool value) { property.set(value); }});
}

ViewNode section(const std::string& id) {
  ViewNode stack = makeNode(Kind::verticalStack, id);
  stack.horizontalPaddings = 2;
  stack.verticalPaddings = 1;
  return stack;
}

}  // namespace

MenuBarSettings::MenuBarSettings(const ViewContext& context)
    : context_(context),
      textOnlyIcon_(context.settings.textOnlyIcon, context.runLoop),
      showPercentage_(context.settings.showPercentage, context.runLoop),
      labelWidth_{"labelWidth"},
      showOnHover_(context),
      hideWhileOnPower_(context) {}

ViewNode MenuBarSettings::body(ViewScope& scope, const std::string& id) {
  ViewNode behaviour = section(id + "/behaviour");
  behaviour.children = {showOnHover_.body(scope, behaviour.id + "/showOnHover"),
                        hideWhileOnPower_.body(scope, behaviour.id + "/hideWhileOnPower")};

  ViewNode form = makeNode(Kind::form, id);
  form.verticalPaddings = 1;
  form.children = {appearance(scope, id + "/appearance"), makeNode(Kind::divider, id + "/divider"),
                   std::move(behaviour)};
  return form;
}

ViewNode MenuBarSettings::appearance(ViewScope& scope, const std::string& id) const {
  const EqualWidthWithBinding equalWidth(labelWidth_, ViewNode::Alignment::center);
  ViewNode show = equalWidth.body(
      picker(scope, id + "/show", "Show:", showPercentage_, {"Percentage", "Time remaining"}));
  show.paddingBottom = kShowPadding;
  ViewNode type = equalWidth.body(picker(scope, id + "/type", "Type:", textOnlyIcon_,
                                         {"Text", "Icon", PickerStyle::horizontalRadioGroup}));
  type.help =
      "Showing as text can be useful if you want to use Kelvane together with the system battery "
      "menu bar item.";
  type.paddingBottom = kTypePadding;

  ViewNode stack = section(id);
  stack.children = {std::move(show), std::move(type)};
  const auto addToggle = [&](const std::string& label, const SettingKey<bool>& key) {
    stack.children.push_back(
        settingToggle(scope, std::make_shared<SettingToggle>(label, key, context_.runLoop),
                      id + "/" + key.name()));
  };
  const SettingsKeys& settings = context_.settings;
  if (textOnlyIcon_.get()) {
    addToggle("Small text size", settings.smallMenuBarText);
  } else {
    addToggle("Large icon", settings.largeIcon);
    addToggle("Alternative icon style", settings.oldIconStyle);
  }
  if (showPercentage_.get()) addToggle("Show percentage sign", settings.showPercentageSignInIcon);
  return stack;
}

}  // namespace kelvane
