#include "settings/views/notify_at_percentages_setting.h"

#include <utility>

#include "kit/percent_digits.h"
#include "settings/views/multi_checkbox_picker.h"

namespace kelvane {
namespace {

using Kind = ViewNode::Kind;

constexpr double kColumnSpacing = 40;
constexpr double kSheetWidth = 400;

std::string levelLabel(double level) { return percentDigits(level) + "\uFE6A"; }

}  // namespace

NotifyAtPercentagesSetting::NotifyAtPercentagesSetting(const ViewContext& context,
                                                       std::vector<double> percentages)
    : context_(context), percentages_(std::move(percentages)), isShowingSheet_(context, false) {}

ViewNode NotifyAtPercentagesSetting::body(ViewScope& scope, const std::string& id) {
  ViewNode button = makeNode(Kind::button, id + "/button", "Notify at percentages…");
  button.help =
      "Show a notification when the battery is at the chosen percentages. This can be useful if "
      "your battery is bad and you need an earlier warning than normal or if you want to unplug it "
      "before it's fully charged.";
  scope.onPress(button, [this] { isShowingSheet_.set(true); });

  ViewNode stack = makeNode(Kind::verticalStack, id);
  stack.children.push_back(std::move(button));
  if (isShowingSheet_.get()) stack.children.push_back(sheet(scope, id + "/sheet"));
  return stack;
}

ViewNode NotifyAtPercentagesSetting::sheet(ViewScope& scope, const std::string& id) {
  ViewNode columns = makeNode(Kind::horizontalStack, id + "/columns");
  columns.alignment = ViewNode::Alignment::center;
  columns.spacing = kColumnSpacing;
  columns.horizontalPaddings = 1;
  columns.verticalPaddings = 1;
  columns.width = kSheetWidth;
  columns.children = {column(scope, columns.id + "/onBattery", "On battery",
                             context_.settings.notifyAtPercentagesOnBattery),
                      column(scope, columns.id + "/onPower", "While charging",
                             context_.settings.notifyAtPercentagesOnPower)};

  const auto close = [this] { isShowingSheet_.set(false); };
  ViewNode done = makeNode(Kind::button, id + "/done", "Done");
  done.isDefault = true;
  scope.onPress(done, close);

  ViewNode sheet = makeNode(Kind::sheet, id);
  scope.onPress(sheet, close);
  sheet.children = {std::move(columns), std::move(done)};
  return sheet;
}

ViewNode NotifyAtPercentagesSetting::column(ViewScope& scope, const std::string& id,
                                            const std::string& title,
                                            const SettingKey<Levels>& key) const {
  ViewNode stack = makeNode(Kind::verticalStack, id);
  stack.alignment = ViewNode::Alignment::center;
  const SettingsMultiCheckboxPicker<double> levels(key, context_.runLoop, percentages_, levelLabel);
  stack.children = {makeNode(Kind::text, id + "/title", title), levels.body(scope, id + "/levels")};
  return stack;
}

}  // namespace kelvane
