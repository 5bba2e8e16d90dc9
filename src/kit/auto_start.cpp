#include "kit/auto_start.h"

#include <utility>

#include "kit/fatal_error.h"

namespace kelvane {
namespace {

std::string helperOf(const std::string& applicationIdentifier) {
  if (applicationIdentifier.empty()) fatalError("the application has no identifier");
  return applicationIdentifier + "-AutoStartHelper";
}

}  // namespace

AutoStart::Toggle::Toggle(Observable& observable, std::string label)
    : observable_(observable), label_(std::move(label)) {}

ViewNode AutoStart::Toggle::view(const std::string& id) const {
  ViewNode node;
  node.kind = ViewNode::Kind::toggle;
  node.id = id;
  node.label = label_;
  node.action = id;
  node.isOn = isOn();
  return node;
}

AutoStart::AutoStart(LoginItems& loginItems, const std::string& applicationIdentifier)
    : loginItems_(loginItems), helperIdentifier_(helperOf(applicationIdentifier)) {}

bool AutoStart::isEnabled() const {
  const auto jobs = loginItems_.jobs();
  if (!jobs) return false;
  for (const PropertyDictionary& job : *jobs) {
    const auto label = job.find("Label");
    if (label == job.end() || label->second.string() != helperIdentifier_) continue;
    const auto onDemand = job.find("OnDemand");
    return onDemand != job.end() && onDemand->second.boolean().value_or(false);
  }
  return false;
}

void AutoStart::setEnabled(bool isEnabled) {
  observable_.willChange_.send({});
  kvo_.notices_.send({.isPrior = true});
  loginItems_.setEnabled(helperIdentifier_, isEnabled);
  kvo_.notices_.send({.isPrior = false});
  changes().send(isEnabled);
}

CurrentValueSubject<bool>& AutoStart::changes() {
  if (!changes_) changes_.emplace(isEnabled());
  return *changes_;
}

}  // namespace kelvane
