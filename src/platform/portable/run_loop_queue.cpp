#include "platform/portable/run_loop_queue.h"

#include <algorithm>
#include <utility>

namespace kelvane {

void QueueSource::signal() {
  isPending_ = true;
  if (loop_) loop_->deadlineChanged();
}

// Finds its alarm by identity, because a repeating alarm moves to a new key each time.
class RunLoopQueue::TimerHandle : public Timer {
 public:
  TimerHandle(std::weak_ptr<RunLoopQueue*> loop, std::shared_ptr<Alarm> alarm)
      : loop_(std::move(loop)), alarm_(std::move(alarm)) {}
  ~TimerHandle() override {
    alarm_->repeats = false;
    if (const auto loop = loop_.lock())
      std::erase_if((*loop)->alarms_, [&](const auto& entry) { return entry.second == alarm_; });
  }

 private:
  std::weak_ptr<RunLoopQueue*> loop_;
  std::shared_ptr<Alarm> alarm_;
};

RunLoopQueue::~RunLoopQueue() {
  for (const auto& source : sources_) source->loop_ = nullptr;
}

void RunLoopQueue::async(Job job) {
  if (std::this_thread::get_id() != mainThread_) {
    const std::lock_guard lock(foreignMutex_);
    foreignJobs_.push_back(std::move(job));
    wakeUp();
    return;
  }
  jobs_.push_back(std::move(job));
  deadlineChanged();
}

void RunLoopQueue::asyncAfter(double seconds, Job job) {
  auto alarm = std::make_shared<Alarm>();
  alarm->job = [this, job = std::move(job)]() mutable { async(std::move(job)); };
  alarms_.emplace(AlarmKey(monotonicNow() + seconds, ++lastAlarm_), std::move(alarm));
  deadlineChanged();
}

std::unique_ptr<Timer> RunLoopQueue::startTimer(double interval, bool repeats, Job job) {
  auto alarm = std::make_shared<Alarm>(Alarm{interval, repeats, std::move(job)});
  alarms_.emplace(AlarmKey(monotonicNow() + interval, ++lastAlarm_), alarm);
  deadlineChanged();
  return std::make_unique<TimerHandle>(self_, std::move(alarm));
}

void RunLoopQueue::addSource(std::shared_ptr<RunLoopSource> source, RunLoopMode mode) {
  auto queueSource = std::dynamic_pointer_cast<QueueSource>(std::move(source));
  if (!queueSource) return;
  queueSource->modes_.insert(mode);
  queueSource->loop_ = this;
  if (std::ranges::find(sources_, queueSource) == sources_.end())
    sources_.push_back(std::move(queueSource));
  deadlineChanged();
}

void RunLoopQueue::removeSource(const std::shared_ptr<RunLoopSource>& source, RunLoopMode mode) {
  const auto found = std::ranges::find(sources_, source);
  if (found == sources_.end()) return;
  (*found)->modes_.erase(mode);
  if (!(*found)->modes_.empty()) return;
  (*found)->loop_ = nullptr;
  sources_.erase(found);
}

RunLoopQueue::ModeScope::ModeScope(RunLoopQueue& loop, RunLoopMode mode)
    : loop_(loop), mode_(mode) {
  loop_.modes_.push_back(mode);
}

RunLoopQueue::ModeScope::~ModeScope() {
  const auto latest = std::ranges::find(loop_.modes_.rbegin(), loop_.modes_.rend(), mode_);
  if (latest != loop_.modes_.rend()) loop_.modes_.erase(std::next(latest).base());
  loop_.deadlineChanged();  // what was held back may be heard now
}

void RunLoopQueue::runTurn() {
  if (std::exchange(isRunning_, true)) return;
  adoptForeignJobs();
  runPendingSources();
  runQueuedJobs();
  runDueAlarms();
  isRunning_ = false;
  deadlineChanged();
}

void RunLoopQueue::adoptForeignJobs() {
  const std::lock_guard lock(foreignMutex_);
  for (Job& job : foreignJobs_) jobs_.push_back(std::move(job));
  foreignJobs_.clear();
}

bool RunLoopQueue::hasForeignJobs() const {
  const std::lock_guard lock(foreignMutex_);
  return !foreignJobs_.empty();
}

std::optional<double> RunLoopQueue::nextDeadline() const {
  if (hasForeignJobs()) return monotonicNow();
  if (!jobs_.empty() || hasPendingSource()) return monotonicNow();
  if (alarms_.empty()) return std::nullopt;
  return alarms_.begin()->first.first;
}

bool RunLoopQueue::hasPendingSource() const {
  return std::ranges::any_of(sources_, [this](const auto& source) {
    return source->isPending_ && source->modes_.contains(mode());
  });
}

void RunLoopQueue::runPendingSources() {
  for (const auto sources = sources_; const auto& source : sources) {
    if (!source->isPending_ || source->loop_ != this || !source->modes_.contains(mode())) continue;
    source->isPending_ = false;
    source->callback_();
  }
}

void RunLoopQueue::runQueuedJobs() {
  for (auto count = jobs_.size(); count > 0 && !jobs_.empty(); --count) {
    const Job job = std::move(jobs_.front());
    jobs_.pop_front();
    job();
  }
}

void RunLoopQueue::runDueAlarms() {
  const double now = monotonicNow();
  // Alarms set from here on wait for the next turn, even when they are due at once.
  const std::uint64_t last = lastAlarm_;
  for (auto next = alarms_.begin(); next != alarms_.end() && next->first.first <= now;) {
    if (next->first.second > last) {
      ++next;
      continue;
    }
    const std::shared_ptr<Alarm> alarm = next->second;
    const double due = next->first.first;
    alarms_.erase(next);
    if (alarm->repeats) {
      // A missed beat is not made up for.
      const double onTime = due + alarm->interval;
      const double following = onTime > now ? onTime : now + alarm->interval;
      alarms_.emplace(AlarmKey(following, ++lastAlarm_), alarm);
    }
    alarm->job();
    next = alarms_.begin();
  }
}

}  // namespace kelvane
