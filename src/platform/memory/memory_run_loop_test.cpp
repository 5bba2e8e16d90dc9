#include "platform/memory/memory_run_loop.h"

#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvane {
namespace {

using ::testing::ElementsAre;

class RunLoopTest : public ::testing::Test {
 protected:
  std::shared_ptr<QueueSource> addSource() {
    auto source = std::make_shared<QueueSource>([this] { seen.push_back("source"); });
    loop.addSource(source, RunLoopMode::standard);
    return source;
  }
  RunLoop::Job note(const std::string& what) {
    return [this, what] { seen.push_back(what); };
  }
  MemoryRunLoop loop;
  std::vector<std::string> seen;
};

TEST_F(RunLoopTest, JobsRunInOrderAndNeverInsideEachOther) {
  loop.async([this] {
    loop.async(note("third"));
    loop.runTurn();
    seen.push_back("first");
  });
  loop.async(note("second"));
  EXPECT_TRUE(seen.empty());
  loop.run();
  EXPECT_THAT(seen, ElementsAre("first", "second", "third"));
}

TEST_F(RunLoopTest, DelayedJobsKeepTheirTime) {
  loop.asyncAfter(5.0, note("five"));
  loop.asyncAfter(1.0, note("one"));
  loop.advance(4.99);
  EXPECT_THAT(seen, ElementsAre("one"));
  loop.advance(0.01);
  EXPECT_THAT(seen, ElementsAre("one", "five"));
}

TEST_F(RunLoopTest, RepeatingTimerStopsInsideItsOwnJob) {
  std::unique_ptr<Timer> timer;
  timer = loop.startTimer(0.2, true, [&] {
    seen.push_back("tick");
    if (seen.size() == 3) timer.reset();
  });
  loop.advance(10);
  EXPECT_EQ(seen.size(), 3U);
}

TEST_F(RunLoopTest, TimerHandleMayOutliveTheLoop) {
  auto other = std::make_unique<MemoryRunLoop>();
  auto timer = other->startTimer(1, true, note("never"));
  other.reset();
  timer.reset();
  EXPECT_TRUE(seen.empty());
}

TEST_F(RunLoopTest, SignalsOfOneTurnAreOneEvent) {
  const auto source = addSource();
  source->signal();
  source->signal();
  loop.run();
  source->signal();
  loop.run();
  EXPECT_THAT(seen, ElementsAre("source", "source"));
}

TEST_F(RunLoopTest, SourcesAreHeldInOtherModesWhileJobsAndTimersRun) {
  const auto source = addSource();
  const auto timer = loop.startTimer(0.2, true, note("tick"));
  {
    const RunLoopQueue::ModeScope modal(loop, RunLoopMode::modal);
    source->signal();
    source->signal();
    loop.async(note("job"));
    loop.advance(0.4);
    EXPECT_THAT(seen, ElementsAre("job", "tick", "tick"));
  }
  loop.run();
  EXPECT_THAT(seen, ElementsAre("job", "tick", "tick", "source"));
}

TEST_F(RunLoopTest, OverlappingModesEndInAnyOrder) {
  auto tracking = std::make_unique<RunLoopQueue::ModeScope>(loop, RunLoopMode::tracking);
  auto modal = std::make_unique<RunLoopQueue::ModeScope>(loop, RunLoopMode::modal);
  tracking.reset();
  EXPECT_EQ(loop.mode(), RunLoopMode::modal);
  modal.reset();
  EXPECT_EQ(loop.mode(), RunLoopMode::standard);
}

TEST_F(RunLoopTest, RemovedSourceIsNotHeard) {
  const auto source = addSource();
  source->signal();
  loop.removeSource(source, RunLoopMode::standard);
  loop.run();
  EXPECT_TRUE(seen.empty());
}

}  // namespace
}  // namespace kelvane
