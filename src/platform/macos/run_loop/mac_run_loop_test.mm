#include "platform/macos/run_loop/mac_run_loop.h"

#include <string>
#include <thread>

#include <doubles/doubles.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class MacRunLoopTest : public ::testing::Test {
 protected:
  RunLoop::Job note(const std::string& what) {
    return [this, what] { seen.push_back(what); };
  }
  std::vector<std::string> take() { return std::exchange(seen, {}); }

  std::vector<std::string> seen;
  MacRunLoop loop;
};

TEST_F(MacRunLoopTest, JobsRunInOrderInALaterTurnFromAnyThread) {
  loop.async([this] {
    note("first")();
    loop.async(note("nested"));
    EXPECT_THAT(take(), ElementsAre("first"));
  });
  std::thread([this] { loop.async(note("foreign")); }).join();
  loop.asyncAfter(0.5, note("later"));
  EXPECT_THAT(seen, IsEmpty());
  doubles::runFor(0);
  EXPECT_THAT(take(), ElementsAre("foreign", "nested"));
  doubles::runFor(0.4);
  EXPECT_THAT(take(), IsEmpty());
  doubles::runFor(0.1);
  EXPECT_THAT(take(), ElementsAre("later"));
}

TEST_F(MacRunLoopTest, DelaysThatNoClockHoldsAreBounded) {
  loop.asyncAfter(-1, note("past"));
  loop.asyncAfter(1e300, note("never"));
  doubles::runFor(1e6);
  EXPECT_THAT(take(), ElementsAre("past"));
}

TEST_F(MacRunLoopTest, TimersRunInEveryModeUntilTheyAreDestroyed) {
  auto once = loop.startTimer(2, false, note("once"));
  int beats = 0;
  std::unique_ptr<Timer> repeating;
  repeating = loop.startTimer(1, true, [&, own = std::make_shared<std::string>("beat")] {
    // Destroys itself, and this closure with it, in the middle of the job.
    if (++beats == 3) repeating.reset();
    note (*own)();
  });
  doubles::runFor(10);
  EXPECT_THAT(take(), ElementsAre("beat", "once", "beat", "beat"));
  const auto modal = loop.startTimer(0, false, note("modal"));
  const auto tracking = loop.startTimer(0, false, note("tracking"));
  doubles::runOnce(NSModalPanelRunLoopMode);
  doubles::runOnce(NSEventTrackingRunLoopMode);
  EXPECT_THAT(take(), ElementsAre("modal", "tracking"));
  auto dropped = loop.startTimer(1, true, note("dropped"));
  dropped.reset();
  doubles::runFor(5);
  EXPECT_THAT(take(), IsEmpty());
}

TEST_F(MacRunLoopTest, TheMainQueueRunsInEveryMode) {
  for (NSRunLoopMode mode : @[ NSModalPanelRunLoopMode, NSEventTrackingRunLoopMode ]) {
    loop.async(note("job"));
    doubles::runOnce(mode);
    EXPECT_THAT(take(), ElementsAre("job")) << mode.UTF8String;
  }
}

TEST_F(MacRunLoopTest, TerminateEndsTheRunAfterThePresentJobWithItsCode) {
  loop.async([this] {
    loop.terminate(3);
    note("rest of the job")();
  });
  EXPECT_EQ(loop.run(), 3);
  EXPECT_EQ(doubles::timersRunning(), 0);
  EXPECT_THAT(take(), ElementsAre("rest of the job"));
}

}  // namespace
}  // namespace kelvane
