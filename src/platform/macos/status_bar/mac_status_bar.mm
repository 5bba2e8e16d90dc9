#include "platform/macos/status_bar/mac_status_bar.h"

#include "platform/macos/status_bar/mac_status_item.h"

namespace kelvane {

MacStatusBar::MacStatusBar() : item_(std::make_shared<MacStatusItem*>(nullptr)) {}
MacStatusBar::~MacStatusBar() = default;

std::unique_ptr<StatusItem> MacStatusBar::makeItem(double length) {
  // Which item is the latest; shared with the callback, which has to know its own.
  const auto own = std::make_shared<const MacStatusItem*>(nullptr);
  auto item = std::make_unique<MacStatusItem>(length, [latest = item_, own] {
    if (*latest == *own) *latest = nullptr;
  });
  *own = item.get();
  *item_ = item.get();
  return item;
}

}  // namespace kelvane
