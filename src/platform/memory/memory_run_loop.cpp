#include "platform/memory/memory_run_loop.h"

#include <chrono>

namespace kelvane {

bool MemoryRunLoop::run() {
  for (int turn = 0; turn < 10'000; ++turn) {
    const auto deadline = nextDeadline();
    if (!deadline || *deadline > elapsed_) return true;
    runTurn();
  }
  return false;
}

void MemoryRunLoop::advance(double seconds) {
  const double end = elapsed_ + seconds;
  run();
  for (auto deadline = nextDeadline(); deadline && *deadline <= end; deadline = nextDeadline()) {
    elapsed_ = *deadline;
    if (!run()) break;
  }
  elapsed_ = end;
}

Date MemoryRunLoop::now() const {
  using namespace std::chrono;
  constexpr Date beginning = sys_days(year(2026) / March / 14) + 9h;
  return beginning + duration_cast<microseconds>(duration<double>(elapsed_));
}

}  // namespace kelvane
