#include "platform/macos/windows/modal_alert.h"

#include <utility>

#import <AppKit/AppKit.h>

#include "platform/macos/windows/native_alert.h"
#include "platform/portable/alert_run.h"

namespace kelvane {
namespace {

struct ModalRun {
  NSAlert* alert;
  AlertRun state;
};

void run(ModalRun& each) {
  const NSModalResponse response =
      each.state.begin() ? [each.alert runModal] : NSModalResponseAbort;
  each.alert = nil;
  each.state.end(buttonPlace(response));
}

// `abortModal` may leave by an exception, which none of the application's functions is to meet.
void endLoopSoon(std::shared_ptr<ModalRun> each) {
  NSTimer* timer = [NSTimer
      timerWithTimeInterval:0
                    repeats:NO
                      block:^(NSTimer*) {
                        if (each->state.isShown() && NSApp.modalWindow == each->alert.window)
                          [NSApp abortModal];
                      }];
  [NSRunLoop.mainRunLoop addTimer:timer forMode:NSModalPanelRunLoopMode];
}

class ModalAlert : public AlertHandle {
 public:
  explicit ModalAlert(std::shared_ptr<ModalRun> run) : run_(std::move(run)) {}

  void abort() override {
    if (run_->state.abort()) endLoopSoon(run_);
  }

 private:
  std::shared_ptr<ModalRun> run_;
};

}  // namespace

std::unique_ptr<AlertHandle> showModalAlert(const Alert& alert, std::function<void(int)> done) {
  const auto each =
      std::make_shared<ModalRun>(ModalRun{nsAlert(alert), AlertRun(alert, std::move(done))});
  // Not by the main queue: it would stand still for as long as the alert is shown.
  CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopDefaultMode, ^{
    run(*each);
  });
  CFRunLoopWakeUp(CFRunLoopGetMain());
  return std::make_unique<ModalAlert>(each);
}

}  // namespace kelvane
