#include "platform/macos/windows/modal_alert.h"

#include <utility>

#import <AppKit/AppKit.h>

#include "platform/macos/drawing/ns_image.h"
#include "platform/macos/foundation/strings.h"

namespace kelvane {
namespace {

struct Run {
  NSAlert* alert = nil;
  std::function<void(int)> done;
  bool isAborted = false;
  bool isRunning = false;
};

NSAlertStyle styleOf(AlertStyle style) {
  switch (style) {
    case AlertStyle::warning:
      break;
    case AlertStyle::informational:
      return NSAlertStyleInformational;
    case AlertStyle::critical:
      return NSAlertStyleCritical;
  }
  return NSAlertStyleWarning;
}

NSAlert* makeAlert(const Alert& alert) {
  NSAlert* made = [[NSAlert alloc] init];
  made.messageText = nsString(alert.title);
  if (!alert.message.empty()) made.informativeText = nsString(alert.message);
  made.alertStyle = styleOf(alert.style);
  for (const std::string& title : alert.buttons) [made addButtonWithTitle:nsString(title)];
  // The alert is at least as wide as what it has below its text.
  if (alert.minimumWidth > 0)
    made.accessoryView = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, alert.minimumWidth, 0)];
  if (alert.icon) made.icon = nsImage(*alert.icon);
  return made;
}

// The buttons answer with numbers that begin at the first one's.
int buttonOf(NSModalResponse response) {
  return response >= NSAlertFirstButtonReturn
             ? static_cast<int>(response - NSAlertFirstButtonReturn)
             : 0;
}

void run(const std::shared_ptr<Run>& each) {
  int button = 0;
  if (!each->isAborted) {
    each->isRunning = true;
    button = buttonOf([each->alert runModal]);
    each->isRunning = false;
  }
  each->alert = nil;
  if (const auto done = std::exchange(each->done, nullptr)) done(each->isAborted ? 0 : button);
}

class ModalAlert : public AlertHandle {
 public:
  explicit ModalAlert(std::shared_ptr<Run> running) : run_(std::move(running)) {}

  void abort() override {
    if (run_->isAborted) return;
    run_->isAborted = true;
    if (!run_->isRunning) return;
    // In a timer of its own: `abortModal` may leave by an exception, which no job survives.
    const auto aborted = run_;
    NSTimer* timer = [NSTimer
        timerWithTimeInterval:0
                      repeats:NO
                        block:^(NSTimer*) {
                          if (aborted->isRunning && NSApp.modalWindow == aborted->alert.window)
                            [NSApp abortModal];
                        }];
    [NSRunLoop.mainRunLoop addTimer:timer forMode:NSModalPanelRunLoopMode];
  }

 private:
  std::shared_ptr<Run> run_;
};

}  // namespace

std::unique_ptr<AlertHandle> showModalAlert(const Alert& alert, std::function<void(int)> done) {
  const auto running = std::make_shared<Run>();
  running->alert = makeAlert(alert);
  running->done = std::move(done);
  // By a timer: the main queue, and what else the loop was given to perform, would stand still for
  // as long as the alert is shown.
  NSTimer* timer = [NSTimer timerWithTimeInterval:0
                                          repeats:NO
                                            block:^(NSTimer*) {
                                              run(running);
                                            }];
  [NSRunLoop.mainRunLoop addTimer:timer forMode:NSDefaultRunLoopMode];
  return std::make_unique<ModalAlert>(running);
}

}  // namespace kelvane
