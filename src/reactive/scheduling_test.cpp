#include "reactive/scheduling.h"

#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_run_loop.h"
#include "reactive/subject.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SchedulingTest : public ::testing::Test {
 protected:
  MemoryRunLoop loop;
  PassthroughSubject<int> subject;
  std::vector<int> seen;
  Publisher<int>::Handler collect = [this](int v) { seen.push_back(v); };
};

TEST_F(SchedulingTest, MainQueueDeliversLaterAndNothingAfterDropping) {
  auto subscription = receiveOnMainQueue(subject.publisher(), loop).subscribe(collect);
  subject.send(1);
  EXPECT_THAT(seen, IsEmpty());
  loop.run();
  EXPECT_THAT(seen, ElementsAre(1));
  subject.send(2);
  subscription.cancel();
  loop.run();
  EXPECT_THAT(seen, ElementsAre(1));
}

TEST_F(SchedulingTest, DebounceDeliversTheLastOnceSettled) {
  const auto subscription = debounce(subject.publisher(), 1.0, loop).subscribe(collect);
  subject.send(1);
  loop.advance(0.9);
  subject.send(2);
  loop.advance(0.9);
  subject.send(3);
  loop.advance(0.99);
  EXPECT_THAT(seen, IsEmpty());
  loop.advance(0.01);
  EXPECT_THAT(seen, ElementsAre(3));
  subject.send(4);
  loop.advance(1);
  EXPECT_THAT(seen, ElementsAre(3, 4));
}

TEST_F(SchedulingTest, DebounceDroppedWhileWaitingStaysSilent) {
  auto subscription = debounce(subject.publisher(), 1.0, loop).subscribe(collect);
  subject.send(1);
  subscription.cancel();
  loop.advance(5);
  EXPECT_THAT(seen, IsEmpty());
}

}  // namespace
}  // namespace kelvane
