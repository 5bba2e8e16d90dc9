#include "platform/portable/alert_run.h"

#include <utility>

namespace kelvane {

std::optional<std::size_t> pressedButton(std::size_t buttons, std::ptrdiff_t reported) {
  if (reported < 0 || std::cmp_greater_equal(reported, buttons)) return std::nullopt;
  return static_cast<std::size_t>(reported);
}

Alert alertOf(const ViewNode& node) {
  Alert alert{.title = node.label};
  for (const ViewNode& child : node.children) {
    if (child.kind == ViewNode::Kind::button) alert.buttons.push_back(child.label);
    if (child.kind == ViewNode::Kind::text)
      alert.message += (alert.message.empty() ? "" : "\n") + child.label;
  }
  return alert;
}

AlertRun::AlertRun(const Alert& alert, std::function<void(int)> done)
    : buttons_(alert.buttons.size()), done_(std::move(done)) {}

bool AlertRun::begin() {
  if (isAborted_ || state_ != State::waiting) return false;
  state_ = State::shown;
  return true;
}

bool AlertRun::abort() {
  const bool isFirst = !std::exchange(isAborted_, true);
  return isFirst && isShown();
}

void AlertRun::end(std::ptrdiff_t reported) {
  state_ = State::ended;
  const auto button = isAborted_ ? std::nullopt : pressedButton(buttons_, reported);
  if (const auto done = std::exchange(done_, nullptr)) done(static_cast<int>(button.value_or(0)));
}

}  // namespace kelvane
