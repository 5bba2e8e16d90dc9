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

// By a timer of its own: nothing else that the loop has to do then waits for the alert, or is left
// by the exception that ends one.
void soon(NSRunLoopMode mode, const std::shared_ptr<ModalRun>& each, void (*job)(ModalRun&)) {
  const auto kept = each;
  NSTimer* timer = [NSTimer timerWithTimeInterval:0
                                          repeats:NO
                                            block:^(NSTimer*) {
                                              job(*kept);
                                            }];
  [NSRunLoop.mainRunLoop addTimer:timer forMode:mode];
}

void endLoop(ModalRun& each) {
  if (each.state.isShown() && NSApp.modalWindow == each.alert.window) [NSApp abortModal];
}

class ModalAlert : public AlertHandle {
 public:
  explicit ModalAlert(std::shared_ptr<ModalRun> run) : run_(std::move(run)) {}

  void abort() override {
    if (run_->state.abort()) soon(NSModalPanelRunLoopMode, run_, endLoop);
  }

 private:
  std::shared_ptr<ModalRun> run_;
};

}  // namespace

std::unique_ptr<AlertHandle> showModalAlert(const Alert& alert, std::function<void(int)> done) {
  const auto each =
      std::make_shared<ModalRun>(ModalRun{nsAlert(alert), AlertRun(alert, std::move(done))});
  soon(NSDefaultRunLoopMode, each, run);
  return std::make_unique<ModalAlert>(each);
}

}  // namespace kelvane
