// The application's event loop: dispatch's main queue, timers and sources of the main run loop.
// Main thread, but for `async`.
//
// The main queue does not run inside one of its own jobs, not even while that job shows a modal
// alert; timers do.
#pragma once

#include <memory>
#include <set>
#include <utility>

#include "platform/macos/run_loop/cf_run_loop_source.h"
#include "platform/run_loop.h"

namespace kelvane {

class MacRunLoop : public RunLoop {
 public:
  MacRunLoop() = default;
  // Removes the sources that are still added.
  ~MacRunLoop() override;
  MacRunLoop(const MacRunLoop&) = delete;
  MacRunLoop& operator=(const MacRunLoop&) = delete;

  // Runs the application until `terminate`, and answers what that was given. When the system ends
  // the application (log-out, say) it does not return: the process ends with 0.
  int run();
  // Ends modal alerts first, as if nobody had answered them.
  void terminate(int exitCode) override;

  void async(Job job) override;
  void asyncAfter(double seconds, Job job) override;
  [[nodiscard]] std::unique_ptr<Timer> startTimer(double interval, bool repeats, Job job) override;

  // Sources must be a `CfRunLoopSource`; they live at least as long as they are added. What the
  // system has queued meanwhile is one event for each of its messages.
  void addSource(std::shared_ptr<RunLoopSource> source, RunLoopMode mode) override;
  void removeSource(const std::shared_ptr<RunLoopSource>& source, RunLoopMode mode) override;

  Date now() const override;

 private:
  std::set<std::pair<std::shared_ptr<CfRunLoopSource>, RunLoopMode>> sources_;
  int exitCode_ = 0;
  std::unique_ptr<Timer> ending_;
};

}  // namespace kelvane
