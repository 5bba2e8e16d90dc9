#include "settings/views/view_scope.h"

namespace kelvane {

void ViewScope::onPress(ViewNode& node, std::function<void()> handler) {
  node.action = node.id;
  controls_[node.id] = {0, [handler = std::move(handler)](int) { handler(); }};
}

void ViewScope::onValue(ViewNode& node, std::function<void(int)> handler) {
  node.action = node.id;
  const int values = node.isOn ? 2 : static_cast<int>(node.options.size());
  controls_[node.id] = {values, std::move(handler)};
}

void ViewScope::redrawOn(const Publisher<std::monostate>& willChange) {
  cancellables_.push_back(willChange.subscribe([this](std::monostate) { redraw_(); }));
}

bool ViewScope::perform(const std::string& action, const std::string& id, int value) const {
  const auto found = controls_.find(id);
  if (found == controls_.end() || action != id) return false;
  const auto& [values, handler] = found->second;
  if (values > 0 && (value < 0 || value >= values)) return false;
  handler(value);
  return true;
}

ViewNode makeNode(ViewNode::Kind kind, std::string id, std::string label) {
  ViewNode node;
  node.kind = kind;
  node.id = std::move(id);
  node.label = std::move(label);
  return node;
}

ViewNode settingToggle(ViewScope& scope, std::shared_ptr<SettingToggle> toggle, std::string id,
                       std::string help) {
  ViewNode node = makeNode(ViewNode::Kind::toggle, std::move(id), toggle->label());
  node.help = std::move(help);
  node.isOn = toggle->isOn();
  scope.onValue(node, [toggle = toggle.get()](int value) { toggle->setOn(value != 0); });
  scope.redrawOn(toggle->observable().objectWillChange());
  scope.keep(std::move(toggle));
  return node;
}

}  // namespace kelvane
