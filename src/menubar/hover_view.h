// The popover that shows the other of time and percentage while the pointer rests on the item.
// Main thread.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/status_bar.h"
#include "reactive/subject.h"

namespace kelvane {

// Whether the pointer rests on the item; owned by the hover view it belongs to.
struct HoverState {
  CurrentValueSubject<bool> isHovered{false};
};

// A view to lay over the item's button. `text` is read whenever the popover is shown or refreshed,
// for as long as the item lives.
HoverView makeHoverView(std::shared_ptr<HoverState> state, std::function<std::string()> text);

}  // namespace kelvane
