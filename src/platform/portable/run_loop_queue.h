// The part of a run loop that is the same everywhere: the main queue, timers, and event sources
// that are heard only in their modes. A platform derives from it, tells the time and wakes it up.
//
// Main thread only, the one that made it, but for `async`. Nothing runs inside anything else: jobs,
// timers and sources run one after the other from `runTurn`, and what they add waits for the next
// turn.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <thread>
#include <utility>
#include <vector>

#include "platform/run_loop.h"

namespace kelvane {

class RunLoopQueue;

// An event source that its platform signals. Events that come while it may not be heard, or within
// one turn, are one call of the callback.
class QueueSource : public RunLoopSource {
 public:
  explicit QueueSource(std::function<void()> callback) : callback_(std::move(callback)) {}

  void signal();

 private:
  friend class RunLoopQueue;
  std::function<void()> callback_;
  RunLoopQueue* loop_ = nullptr;  // while added to one
  std::set<RunLoopMode> modes_;
  bool isPending_ = false;
};

class RunLoopQueue : public RunLoop {
 public:
  RunLoopQueue() = default;
  ~RunLoopQueue() override;
  RunLoopQueue(const RunLoopQueue&) = delete;
  RunLoopQueue& operator=(const RunLoopQueue&) = delete;

  void async(Job job) override;
  void asyncAfter(double seconds, Job job) override;
  [[nodiscard]] std::unique_ptr<Timer> startTimer(double interval, bool repeats, Job job) override;
  // Sources must come from `QueueSource`.
  void addSource(std::shared_ptr<RunLoopSource> source, RunLoopMode mode) override;
  void removeSource(const std::shared_ptr<RunLoopSource>& source, RunLoopMode mode) override;

  RunLoopMode mode() const { return modes_.empty() ? RunLoopMode::standard : modes_.back(); }

  // Puts the loop into a mode until the scope is destroyed; scopes may overlap, the latest counts.
  class [[nodiscard]] ModeScope {
   public:
    ModeScope(RunLoopQueue& loop, RunLoopMode mode);
    ~ModeScope();
    ModeScope(const ModeScope&) = delete;
    ModeScope& operator=(const ModeScope&) = delete;

   private:
    RunLoopQueue& loop_;
    RunLoopMode mode_;
  };

  // Runs what is due: pending sources, then the main-queue jobs that were there when it began, then
  // timers. Nothing when called from inside itself.
  void runTurn();

  // When `runTurn` has something to do next, in the seconds of `monotonicNow`; absent: when woken.
  std::optional<double> nextDeadline() const;

 protected:
  // A clock that only moves forward; seconds, the origin does not matter.
  virtual double monotonicNow() const = 0;
  // `nextDeadline` has changed.
  virtual void deadlineChanged() = 0;
  // `runTurn` has something to do at once. Called on any thread but the main one.
  virtual void wakeUp() = 0;
  // To look at after going to sleep: a job may have come between the decision and the doing.
  bool hasForeignJobs() const;

 private:
  friend class QueueSource;
  struct Alarm {
    double interval = 0;
    bool repeats = false;
    Job job;
  };
  class TimerHandle;
  // Ordered by due time, then by the order of starting.
  using AlarmKey = std::pair<double, std::uint64_t>;

  bool hasPendingSource() const;
  void runPendingSources();
  void runQueuedJobs();
  void runDueAlarms();

  void adoptForeignJobs();

  const std::thread::id mainThread_ = std::this_thread::get_id();
  mutable std::mutex foreignMutex_;
  std::vector<Job> foreignJobs_;  // queued by other threads; the mutex guards them

  std::deque<Job> jobs_;
  std::map<AlarmKey, std::shared_ptr<Alarm>> alarms_;
  std::vector<std::shared_ptr<QueueSource>> sources_;
  std::vector<RunLoopMode> modes_;  // the latest last
  std::uint64_t lastAlarm_ = 0;
  // Lets a timer handle outlive the loop.
  std::shared_ptr<RunLoopQueue*> self_ = std::make_shared<RunLoopQueue*>(this);
  bool isRunning_ = false;
};

}  // namespace kelvane
