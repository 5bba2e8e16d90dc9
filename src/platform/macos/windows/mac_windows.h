// The application's windows, alerts and popovers. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "platform/windows.h"

namespace kelvane {

class MacWindows : public Windows {
 public:
  // `itemView` answers the button of the status item, an NSView*, not retained; null while there is
  // none.
  explicit MacWindows(std::function<void*()> itemView) : itemView_(std::move(itemView)) {}

  void activate() override;
  [[nodiscard]] std::unique_ptr<AlertHandle> alert(const Alert& alert,
                                                   std::function<void(int)> done) override;
  [[nodiscard]] std::unique_ptr<ViewWindow> openWindow(const std::string& title,
                                                       const ViewNode& tree,
                                                       ViewWindowEvents events) override;
  // The system's own panel, which reads the application's bundle.
  void showAboutPanel(const ApplicationInformation& information) override;
  [[nodiscard]] std::unique_ptr<PopoverHandle> showPopover(const PopoverContent& content,
                                                           std::function<void()> closed) override;

 private:
  std::function<void*()> itemView_;
};

}  // namespace kelvane
