// The system's status bar. Main thread.
#pragma once

#include <memory>

#include "platform/status_bar.h"

namespace kelvane {

class MacStatusItem;

class MacStatusBar : public StatusBar {
 public:
  MacStatusBar();
  ~MacStatusBar() override;
  MacStatusBar(const MacStatusBar&) = delete;
  MacStatusBar& operator=(const MacStatusBar&) = delete;

  std::unique_ptr<StatusItem> makeItem(double length) override;

  // The latest item, while it lives; else null. For what is shown at it.
  MacStatusItem* item() const { return *item_; }

 private:
  std::shared_ptr<MacStatusItem*> item_;  // an item may outlive the bar
};

}  // namespace kelvane
