// The run loop of the in-memory computer: its time moves only when a test or the demo moves it.
// Main thread.
#pragma once

#include <optional>

#include "platform/portable/run_loop_queue.h"

namespace kelvane {

class MemoryRunLoop : public RunLoopQueue {
 public:
  // Runs turns until nothing is due at the present moment. Ends after 10,000 turns, so that a job
  // that always queues another one fails a test instead of hanging it; false then.
  bool run();

  // Lets `seconds` pass, stopping at each moment at which something is due.
  void advance(double seconds);

  // Seconds passed since the beginning.
  double elapsed() const { return elapsed_; }
  // 2026-03-14 09:00:00 UTC plus what has passed.
  Date now() const override;

  void terminate(int code) override { exitCode = code; }
  std::optional<int> exitCode;  // of the last `terminate`; the loop runs on all the same

 protected:
  double monotonicNow() const override { return elapsed_; }
  void deadlineChanged() override {}
  void wakeUp() override {}

 private:
  double elapsed_ = 0;
};

}  // namespace kelvane
