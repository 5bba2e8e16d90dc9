#include "platform/macos/run_loop/mac_run_loop.h"

#include <algorithm>
#include <chrono>
#include <cstdint>

#import <AppKit/AppKit.h>

namespace kelvane {
namespace {

// A year: longer waits would overflow nanoseconds one day, and nobody waits for them.
constexpr double kLongestDelay = 365.0 * 24 * 60 * 60;
constexpr double kEndingInterval = 0.01;  // seconds

CFRunLoopMode modeName(RunLoopMode mode) {
  switch (mode) {
    case RunLoopMode::standard:
      return kCFRunLoopDefaultMode;
    case RunLoopMode::tracking:
      return (__bridge CFRunLoopMode)NSEventTrackingRunLoopMode;
    case RunLoopMode::modal:
      return (__bridge CFRunLoopMode)NSModalPanelRunLoopMode;
  }
  return kCFRunLoopDefaultMode;
}

class MacTimer : public Timer {
 public:
  MacTimer(double interval, bool repeats, RunLoop::Job job) {
    const auto shared = std::make_shared<const RunLoop::Job>(std::move(job));
    timer_ = [NSTimer timerWithTimeInterval:interval
                                    repeats:repeats
                                      block:^(NSTimer*) {
                                        // The job may destroy the timer, and with it this block.
                                        const auto running = shared;
                                        (*running)();
                                      }];
    [NSRunLoop.mainRunLoop addTimer:timer_ forMode:NSRunLoopCommonModes];
  }
  ~MacTimer() override { [timer_ invalidate]; }

 private:
  NSTimer* timer_;
};

// A loop looks at `stop:` only after an event.
void stopApplication() {
  [NSApp stop:nil];
  NSEvent* event = [NSEvent otherEventWithType:NSEventTypeApplicationDefined
                                      location:NSMakePoint(0, 0)
                                 modifierFlags:0
                                     timestamp:0
                                  windowNumber:0
                                       context:nil
                                       subtype:0
                                         data1:0
                                         data2:0];
  if (event) [NSApp postEvent:event atStart:YES];
}

}  // namespace

MacRunLoop::~MacRunLoop() {
  for (const auto& [source, mode] : sources_)
    CFRunLoopRemoveSource(CFRunLoopGetMain(), source->reference(), modeName(mode));
}

int MacRunLoop::run() {
  [NSApplication.sharedApplication run];
  ending_.reset();
  return exitCode_;
}

void MacRunLoop::terminate(int exitCode) {
  exitCode_ = exitCode;
  // Again and again, because another alert may be on its way. Not by the main queue: a job of it
  // may be what waits for the alert. Not by `abortModal`: a timer that an exception leaves is lost.
  ending_ = startTimer(kEndingInterval, true, [] {
    if (NSApp.modalWindow) {
      [NSApp stopModalWithCode:NSModalResponseAbort];
    } else {
      stopApplication();
    }
  });
}

void MacRunLoop::async(Job job) {
  dispatch_async(dispatch_get_main_queue(), ^{
    job();
  });
}

void MacRunLoop::asyncAfter(double seconds, Job job) {
  const double delay = std::clamp(seconds, 0.0, kLongestDelay);
  const auto nanoseconds = static_cast<std::int64_t>(delay * 1e9);
  dispatch_after(dispatch_time(DISPATCH_TIME_NOW, nanoseconds), dispatch_get_main_queue(), ^{
    job();
  });
}

std::unique_ptr<Timer> MacRunLoop::startTimer(double interval, bool repeats, Job job) {
  return std::make_unique<MacTimer>(interval, repeats, std::move(job));
}

void MacRunLoop::addSource(std::shared_ptr<RunLoopSource> source, RunLoopMode mode) {
  auto cfSource = std::dynamic_pointer_cast<CfRunLoopSource>(std::move(source));
  if (!cfSource || !cfSource->reference()) return;
  const auto [added, isNew] = sources_.emplace(std::move(cfSource), mode);
  if (isNew) CFRunLoopAddSource(CFRunLoopGetMain(), added->first->reference(), modeName(mode));
}

void MacRunLoop::removeSource(const std::shared_ptr<RunLoopSource>& source, RunLoopMode mode) {
  const auto found = sources_.find({std::dynamic_pointer_cast<CfRunLoopSource>(source), mode});
  if (found == sources_.end()) return;
  CFRunLoopRemoveSource(CFRunLoopGetMain(), found->first->reference(), modeName(mode));
  sources_.erase(found);
}

Date MacRunLoop::now() const {
  return std::chrono::floor<std::chrono::microseconds>(std::chrono::system_clock::now());
}

}  // namespace kelvane
