#include "platform/linux/glib/glib_run_loop.h"

#include <functional>
#include <string>
#include <thread>
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
      loop.terminate(7);
    });
  });
  loop.async([&] { seen.push_back("job"); });
  source->signal();
  EXPECT_EQ(loop.run(), 7);
  EXPECT_THAT(seen, testing::ElementsAre("source", "job", "timer", "asleep"));
  const auto later = loop.startTimer(60, false, [] {});
  EXPECT_FALSE(g_main_context_pending(nullptr));
}

TEST(GlibRunLoop, ATurnFollowsWhatAnAttachedSourceHasHeard) {
  GlibRunLoop loop;
  std::vector<std::string> seen;
  const auto hear = [&] {
    seen.push_back("heard");
    loop.async([&] {
      seen.push_back("turn");
      // A turn inside of a turn is none, and a loop in there must not spin.
      loop.async([&] { seen.push_back("next turn"); });
      seen.push_back(g_main_context_iteration(nullptr, FALSE) ? "busy" : "asleep");
    });
  };
  std::function<void()> job(hear);
  GSource* source = g_idle_source_new();
  g_source_set_callback(
      source,
      [](gpointer run) {
        (*static_cast<std::function<void()>*>(run))();
        return G_SOURCE_REMOVE;
      },
      &job, nullptr);
  GlibRunLoop::attach(source);
  g_source_unref(source);
  g_main_context_iteration(nullptr, FALSE);
  EXPECT_THAT(seen, testing::ElementsAre("heard", "turn", "asleep"));
  g_main_context_iteration(nullptr, FALSE);
  EXPECT_EQ(seen.back(), "next turn");
  EXPECT_FALSE(g_main_context_pending(nullptr));
}

TEST(GlibRunLoop, OtherThreadsWakeItUp) {
  GlibRunLoop loop;
  const auto mainThread = std::this_thread::get_id();
  std::thread::id ranOn;
  std::thread other;
  loop.async([&] {
    other = std::thread([&] {
      loop.async([&] {
        ranOn = std::this_thread::get_id();
        loop.terminate(0);
      });
    });
  });
  const auto tooLate = loop.startTimer(10, false, [&] { loop.terminate(1); });
  EXPECT_EQ(loop.run(), 0);
  other.join();
  EXPECT_EQ(ranOn, mainThread);
}

}  // namespace
}  // namespace kelvane
