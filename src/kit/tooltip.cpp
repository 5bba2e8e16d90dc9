#include "kit/tooltip.h"

#include <utility>

#include "kit/run_once.h"

namespace kelvane {

Tooltip::Tooltip(std::string identifier, bool showOnlyOnce, bool showEvenWhenMenuBarItemIsHidden,
                 Windows& windows, Preferences& preferences)
    : identifier_(std::move(identifier)),
      showOnlyOnce_(showOnlyOnce),
      showEvenWhenMenuBarItemIsHidden_(showEvenWhenMenuBarItemIsHidden),
      windows_(windows),
      preferences_(preferences) {}

bool Tooltip::show(const Content& content, std::function<void()> didClose) {
  if (showOnlyOnce_ && !runOnce(preferences_, "Tooltip_" + identifier_)) return false;
  popover_ = windows_.showPopover({.identifier = identifier_,
                                   .text = content.text,
                                   .maximumTextWidth = content.maximumTextWidth,
                                   .inset = content.contentInset,
                                   .isAnimated = content.isAnimated,
                                   .showsWithoutItem = showEvenWhenMenuBarItemIsHidden_},
                                  std::move(didClose));
  return popover_ != nullptr;
}

void Tooltip::close() {
  if (popover_) popover_->close();
}

}  // namespace kelvane
