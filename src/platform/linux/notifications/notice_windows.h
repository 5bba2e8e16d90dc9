// What windows would say, said by notices and on standard error, where no window can be shown. Main
// thread.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/linux/notifications/notice_board.h"
#include "platform/run_loop.h"
#include "platform/windows.h"

namespace kelvane {

class NoticeWindows : public Windows {
 public:
  // Both outlive this and its handles.
  NoticeWindows(RunLoop& runLoop, NoticeBoard& board) : runLoop_(runLoop), board_(board) {}

  void activate() override {}

  // A critical notice and a line. It holds nothing up, so the run loop's mode stays as it is.
  //
  // Without buttons the alert is dismissed when its notice is, or can't be shown. A choice of
  // buttons can't be offered: the answer is 0 as soon as the notice is shown or can't be, or after
  // a second; the notice stays.
  [[nodiscard]] std::unique_ptr<AlertHandle> alert(const Alert& alert,
                                                   std::function<void(int)> done) override;

  // Tells how to do without; null.
  [[nodiscard]] std::unique_ptr<ViewWindow> openWindow(const std::string& title,
                                                       const ViewNode& tree,
                                                       ViewWindowEvents events) override;
  void showAboutPanel(const ApplicationInformation& information) override;
  // Null.
  [[nodiscard]] std::unique_ptr<PopoverHandle> showPopover(const PopoverContent& content,
                                                           std::function<void()> closed) override;

 private:
  RunLoop& runLoop_;
  NoticeBoard& board_;
  unsigned alerts_ = 0;
};

}  // namespace kelvane
