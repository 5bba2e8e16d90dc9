#include "programs/mac/mac_computer.h"

#include "platform/macos/status_bar/mac_status_item.h"

namespace kelvane {

MacComputer::MacComputer()
    : windows([this]() -> void* {
        const MacStatusItem* item = statusBar.item();
        return item ? (__bridge void*)item->button() : nullptr;
      }) {}

}  // namespace kelvane
