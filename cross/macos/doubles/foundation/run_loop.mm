// The main run loop in virtual time: performed blocks, timers, sources, the main queue, events.
#include "foundation/run_loop.h"

#include <algorithm>
#include <mutex>
#include <thread>
#include <utility>

#include "runtime/abi.h"

const CFRunLoopMode kCFRunLoopDefaultMode = CFSTR("kCFRunLoopDefaultMode");
const CFRunLoopMode kCFRunLoopCommonModes = CFSTR("kCFRunLoopCommonModes");
NSRunLoopMode const NSDefaultRunLoopMode = @"kCFRunLoopDefaultMode";
NSRunLoopMode const NSRunLoopCommonModes = @"kCFRunLoopCommonModes";
NSRunLoopMode const NSModalPanelRunLoopMode = @"NSModalPanelRunLoopMode";
NSRunLoopMode const NSEventTrackingRunLoopMode = @"NSEventTrackingRunLoopMode";

@implementation KelvaneLoopSource
@end

@interface NSTimer () {
 @public
  double due_;
  double interval_;
  bool repeats_;
  bool isValid_;
  NSString* mode_;
  void (^block_)(NSTimer*);
}
@end

namespace kelvane::doubles {
namespace {

struct Performed {
  NSString* mode;
  void (^block)();
};
struct Later {
  double due;
  std::function<void()> action;
};

struct Loop {
  double now = 0;
  bool isAwake = false;
  bool isInMainQueue = false;
  bool handledEvent = false;
  std::vector<Performed> blocks;
  std::vector<NSTimer*> timers;
  std::vector<std::pair<KelvaneLoopSource*, NSString*>> sources;
  std::vector<void (^)()> jobs;
  std::vector<Later> laterJobs;
  std::vector<Later> events;
};
PerTest<Loop> loop;
std::mutex jobsMutex;
const std::thread::id mainThread = std::this_thread::get_id();

bool matches(NSString* wanted, NSString* mode) {
  return [wanted isEqualToString:mode] || [wanted isEqualToString:NSRunLoopCommonModes];
}

// The list is taken as a whole: what comes behind a block in it waits until the block is done, and
// is lost when the block leaves by an exception.
void doBlocks(NSString* mode) {
  auto taken = std::exchange(loop->blocks, {});
  std::vector<Performed> kept;
  for (const Performed& each : taken)
    if (matches(each.mode, mode)) {
      each.block();
    } else {
      kept.push_back(each);
    }
  loop->blocks.insert(loop->blocks.begin(), kept.begin(), kept.end());
}

void doTimers(NSString* mode) {
  for (const auto timers = loop->timers; NSTimer * timer : timers) {
    if (!timer->isValid_ || timer->due_ > loop->now || !matches(timer->mode_, mode)) continue;
    timer->due_ += timer->interval_;
    // Who invalidates a timer while its block runs must not count on the block.
    __unsafe_unretained void (^block)(NSTimer*) = timer->block_;
    __attribute__((objc_precise_lifetime, unused)) void (^once)(NSTimer*);
    if (!timer->repeats_) {
      once = block;
      [timer invalidate];
    }
    block(timer);
  }
}

void doSources(NSString* mode) {
  for (const auto sources = loop->sources; const auto& [source, wanted] : sources) {
    if (!source->isValid_ || source->messages_ == 0 || !matches(wanted, mode)) continue;
    if (--source->messages_ > 0) loop->isAwake = true;
    source->callback_(source->context_);
  }
}

void doMainQueue() {
  std::vector<void (^)()> jobs;
  {
    const std::lock_guard lock(jobsMutex);
    std::erase_if(loop->laterJobs, [](const Later& each) {
      if (each.due > loop->now) return false;
      each.action();
      return true;
    });
    // Not inside one of its own jobs.
    if (loop->isInMainQueue) return;
    jobs = std::exchange(loop->jobs, {});
  }
  loop->isInMainQueue = true;
  for (void (^job)() : jobs) {
    @try {
      job();
    } @catch (id) {
      objc::fail("an exception leaves a job of the main queue");
    }
  }
  loop->isInMainQueue = false;
}

void doEvent() {
  const auto due = std::find_if(loop->events.begin(), loop->events.end(),
                                [](const Later& each) { return each.due <= loop->now; });
  if (due == loop->events.end()) return;
  const auto action = due->action;
  loop->events.erase(due);
  loop->handledEvent = true;
  action();
}

void turn(NSString* mode) {
  @autoreleasepool {
    loop->isAwake = false;
    doBlocks(mode);
    doTimers(mode);
    doSources(mode);
    doMainQueue();
    doEvent();
    doBlocks(mode);
  }
}

// Absent when nothing is ever due.
std::optional<double> nextDue(NSString* mode) {
  std::optional<double> next;
  const auto consider = [&](double due) { next = std::min(next.value_or(due), due); };
  for (NSTimer* each : loop->timers)
    if (each->isValid_ && matches(each->mode_, mode)) consider(each->due_);
  for (const auto& [source, wanted] : loop->sources)
    if (source->isValid_ && source->messages_ && matches(wanted, mode)) consider(loop->now);
  for (const Later& each : loop->laterJobs) consider(each.due);
  for (const Later& each : loop->events) consider(each.due);
  if (loop->isAwake || (!loop->jobs.empty() && !loop->isInMainQueue)) consider(loop->now);
  return next;
}

}  // namespace

void runLoopUntil(NSString* mode, const std::function<bool()>& isDone) {
  while (!isDone()) {
    const auto next = nextDue(mode);
    if (!next) objc::fail("the run loop sleeps for ever");
    loop->now = std::max(loop->now, *next);
    turn(mode);
  }
}

bool takeEventHandled() { return std::exchange(loop->handledEvent, false); }

void afterwards(double seconds, std::function<void()> event) {
  loop->events.push_back({loop->now + seconds, std::move(event)});
}

void runFor(double seconds) {
  const double end = loop->now + seconds;
  for (auto next = nextDue(NSDefaultRunLoopMode); next && *next <= end;
       next = nextDue(NSDefaultRunLoopMode)) {
    loop->now = std::max(loop->now, *next);
    turn(NSDefaultRunLoopMode);
  }
  loop->now = end;
}

void runOnce(NSRunLoopMode mode) { turn(mode); }
double now() { return loop->now; }
int timersRunning() {
  return static_cast<int>(std::count_if(loop->timers.begin(), loop->timers.end(),
                                        [](NSTimer* each) { return each->isValid_; }));
}

}  // namespace kelvane::doubles

using namespace kelvane::doubles;

@implementation NSTimer
@synthesize tolerance;
+ (NSTimer*)timerWithTimeInterval:(NSTimeInterval)interval
                          repeats:(BOOL)repeats
                            block:(void (^)(NSTimer*))block {
  NSTimer* timer = [[NSTimer alloc] init];
  timer->interval_ = interval;
  timer->due_ = loop->now + interval;
  timer->repeats_ = repeats;
  timer->isValid_ = true;
  timer->block_ = block;
  return timer;
}
- (void)invalidate {
  isValid_ = false;
  block_ = nil;
  std::erase(loop->timers, self);
}
@end

@implementation NSRunLoop
+ (NSRunLoop*)mainRunLoop {
  static PerTest<NSRunLoop*> only;
  if (!*only) *only = [[NSRunLoop alloc] init];
  return *only;
}
- (void)addTimer:(NSTimer*)timer forMode:(NSRunLoopMode)mode {
  timer->mode_ = mode;
  loop->timers.push_back(timer);
}
@end

@implementation NSThread
+ (BOOL)isMainThread {
  return std::this_thread::get_id() == mainThread;
}
@end

extern "C" {
static char mainLoop;
CFRunLoopRef CFRunLoopGetMain() { return reinterpret_cast<CFRunLoopRef>(&mainLoop); }
void CFRunLoopWakeUp(CFRunLoopRef) { loop->isAwake = true; }
void CFRunLoopPerformBlock(CFRunLoopRef, CFTypeRef mode, void (^block)()) {
  loop->blocks.push_back({(__bridge NSString*)mode, block});
}
void CFRunLoopAddSource(CFRunLoopRef, CFRunLoopSourceRef source, CFRunLoopMode mode) {
  loop->sources.emplace_back((__bridge KelvaneLoopSource*)source, (__bridge NSString*)mode);
}
void CFRunLoopRemoveSource(CFRunLoopRef, CFRunLoopSourceRef source, CFRunLoopMode mode) {
  std::erase_if(loop->sources, [&](const auto& each) {
    return each.first == (__bridge id)source &&
           [each.second isEqualToString:(__bridge NSString*)mode];
  });
}
void CFRunLoopSourceInvalidate(CFRunLoopSourceRef source) {
  KelvaneLoopSource* each = (__bridge KelvaneLoopSource*)source;
  each->isValid_ = false;
  std::erase_if(loop->sources, [&](const auto& added) { return added.first == each; });
}

static char mainQueue;
dispatch_queue_t dispatch_get_main_queue() {
  return reinterpret_cast<dispatch_queue_t>(&mainQueue);
}
void dispatch_async(dispatch_queue_t, dispatch_block_t block) {
  const std::lock_guard lock(jobsMutex);
  loop->jobs.push_back(block);
}
dispatch_time_t dispatch_time(dispatch_time_t, int64_t delta) {
  return delta > 0 ? static_cast<dispatch_time_t>(delta) : 0;
}
void dispatch_after(dispatch_time_t when, dispatch_queue_t, dispatch_block_t block) {
  dispatch_block_t copy = block;
  loop->laterJobs.push_back(
      {loop->now + static_cast<double>(when) * 1e-9, [copy] { loop->jobs.push_back(copy); }});
}
}
