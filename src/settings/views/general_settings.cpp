#include "settings/views/general_settings.h"

#include <memory>
#include <utility>

namespace kelvane {
namespace {

using Kind = ViewNode::Kind;

constexpr double kSectionPadding = 16;

// Not a regular stride: some people want exactly these.
std::vector<double> offeredLevels() {
  return {0.1, 0.12, 0.15, 0.2,  0.25, 0.3, 0.35, 0.4, 0.5,
          0.6, 0.7,  0.75, 0.77, 0.8,  0.9, 0.95, 0.97};
}

ViewNode launchAtLogin(ViewScope& scope, AutoStart& autoStart, const std::string& id) {
  auto toggle = std::make_shared<AutoStart::Toggle>(autoStart.observable());
  ViewNode node = toggle->view(id);
  scope.onValue(node, [toggle](int value) { toggle->setOn(value != 0); });
  scope.redrawOn(autoStart.observable().objectWillChange());
  return node;
}

}  // namespace

GeneralSettings::GeneralSettings(const ViewContext& context)
    : context_(context), notifyAtPercentages_(context, offeredLevels()) {}

ViewNode GeneralSettings::body(ViewScope& scope, const std::string& id) {
  ViewNode stack = makeNode(Kind::verticalStack, id + "/stack");
  ViewNode notifyAtPercentages =
      notifyAtPercentages_.body(scope, stack.id + "/notifyAtPercentages");
  notifyAtPercentages.paddingTop = kSectionPadding;
  stack.children = {launchAtLogin(scope, context_.autoStart, stack.id + "/launchAtLogin"),
                    settingToggle(scope,
                                  std::make_shared<SettingToggle>(
                                      "Notify when fully charged",
                                      context_.settings.notifyWhenFullyCharged, context_.runLoop),
                                  stack.id + "/notifyWhenFullyCharged",
                                  "Show a notification when the battery is fully charged."),
                    std::move(notifyAtPercentages)};

  ViewNode form = makeNode(Kind::form, id);
  form.horizontalPaddings = 1;
  form.verticalPaddings = 2;
  form.children.push_back(std::move(stack));
  return form;
}

}  // namespace kelvane
