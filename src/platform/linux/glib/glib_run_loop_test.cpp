#include "platform/linux/glib/glib_run_loop.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvane {
namespace {

TEST(GlibRunLoop, RunsJobsTimersAndSourcesAndThenSleeps) {
  GlibRunLoop loop;
  std::vector<std::string> seen;
  const auto source = std::make_shared<QueueSource>([&] { seen.push_back("source"); });
  loop.addSource(source, RunLoopMode::standard);
  const auto timer = loop.startTimer(0.01, false, [&] {
    seen.push_back("timer");
    // Nothing is left to do: the loop must not be ready again by itself.
    loop.async([&] {
      seen.push_back(loop.nextDeadline() ? "busy" : "asleep");
      loop.quit(7);
    });
  });
  loop.async([&] { seen.push_back("job"); });
  source->signal();
  EXPECT_EQ(loop.run(), 7);
  EXPECT_THAT(seen, testing::ElementsAre("source", "job", "timer", "asleep"));
}

}  // namespace
}  // namespace kelvane
