// Popovers at the status item: whether they are shown, and where. Main thread.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "platform/geometry.h"
#include "platform/status_bar.h"
#include "platform/windows.h"

namespace kelvane {

inline bool isPopoverShown(const PopoverContent& content, bool isItemOnScreen) {
  return isItemOnScreen || content.showsWithoutItem;
}

// The frame of an invisible window that a popover points at, in the middle of the item's lower
// edge; y upwards.
inline constexpr Size kAnchorSize{20, 1};
inline Rect anchorFrame(const Rect& item) {
  return {item.x + (item.width - kAnchorSize.width) / 2, item.y, kAnchorSize.width,
          kAnchorSize.height};
}

// Whether the pointer rests on the item, for the popover of a hover view.
class HoverRest {
 public:
  explicit HoverRest(HoverView view) : view_(std::move(view)) {}

  // The pointer is in, or out; out also when the popover has closed by itself. Tells the view of a
  // change. True when it is one, so that the popover has to be shown, or closed.
  [[nodiscard]] bool setHovered(bool isHovered) {
    if (std::exchange(isHovered_, isHovered) == isHovered) return false;
    if (const auto tell = view_.setHovered) tell(isHovered);
    return true;
  }

  // The text to show now; empty after `detach`, and nothing is shown then.
  std::string text() const { return view_.text ? view_.text() : std::string(); }
  double horizontalPadding() const { return view_.horizontalPadding; }
  double verticalPadding() const { return view_.verticalPadding; }

  // Nobody is called from here on.
  void detach() { view_ = {}; }

 private:
  HoverView view_;
  bool isHovered_ = false;
};

}  // namespace kelvane
