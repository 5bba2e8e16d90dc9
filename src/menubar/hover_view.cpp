#include "menubar/hover_view.h"

#include <utility>

namespace kelvane {

HoverView makeHoverView(std::shared_ptr<HoverState> state, std::function<std::string()> text) {
  return {.setHovered =
              [state = std::move(state)](bool isHovered) { state->isHovered.send(isHovered); },
          .text = std::move(text),
          .horizontalPadding = 14,
          .verticalPadding = 10};
}

}  // namespace kelvane
