#include "platform/macos/status_bar/click_watch.h"

#include <utility>

@interface KelvaneClickTarget : NSObject
@end

@implementation KelvaneClickTarget {
 @public
  std::function<void()> callback_;
}

- (void)clicked:(id)sender {
  (void)sender;
  const auto callback = callback_;
  if (callback) callback();
}

@end

namespace kelvane {
namespace {

class ClickObservation : public StatusItemObservation {
 public:
  ClickObservation(NSView* view, std::function<void()> callback)
      : view_(view), target_([[KelvaneClickTarget alloc] init]) {
    target_->callback_ = std::move(callback);
    recognizer_ = [[NSClickGestureRecognizer alloc] initWithTarget:target_
                                                            action:@selector(clicked:)];
    [view_ addGestureRecognizer:recognizer_];
  }
  ~ClickObservation() override {
    target_->callback_ = nullptr;
    [view_ removeGestureRecognizer:recognizer_];
  }
  ClickObservation(const ClickObservation&) = delete;
  ClickObservation& operator=(const ClickObservation&) = delete;

 private:
  NSView* view_;
  KelvaneClickTarget* target_;
  NSClickGestureRecognizer* recognizer_;
};

}  // namespace

std::unique_ptr<StatusItemObservation> observeClicks(NSView* view, std::function<void()> callback) {
  return std::make_unique<ClickObservation>(view, std::move(callback));
}

}  // namespace kelvane
