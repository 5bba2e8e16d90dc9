// The main thread's event loop: the main queue, timers and event sources. Main thread only, but for
// `async`.
#pragma once

#include <functional>
#include <memory>

#include "platform/property_value.h"

namespace kelvane {

// What the loop is occupied with. A modal alert runs it in `modal`, a menu that the platform draws
// by our own process in `tracking`; an event source is heard only in the modes it was added for.
enum class RunLoopMode { standard, tracking, modal };

// An event source that a platform interface made. Opaque to the application; kept alive by whoever
// holds it, heard while it is added to a loop.
class RunLoopSource {
 public:
  virtual ~RunLoopSource() = default;
};

// A running timer; destroying it stops it, also from inside its own job.
class Timer {
 public:
  virtual ~Timer() = default;
};

class RunLoop {
 public:
  using Job = std::function<void()>;
  virtual ~RunLoop() = default;

  // Main queue: jobs run on the main thread in the order they came, each in a later turn than the
  // caller's, never one inside another, in every mode. Any thread may call.
  virtual void async(Job job) = 0;
  // The same, not before `seconds` from now (0 or more) have passed.
  virtual void asyncAfter(double seconds, Job job) = 0;

  // Runs `job` every `interval` seconds (above 0), or once; in every mode, modal alerts included.
  [[nodiscard]] virtual std::unique_ptr<Timer> startTimer(double interval, bool repeats,
                                                          Job job) = 0;

  // From here on the source is heard while the loop runs in `mode`. What arrives in other modes is
  // held back until then; a platform may merge it into one event. Adding twice is once; removing
  // what is not there is nothing.
  virtual void addSource(std::shared_ptr<RunLoopSource> source, RunLoopMode mode) = 0;
  virtual void removeSource(const std::shared_ptr<RunLoopSource>& source, RunLoopMode mode) = 0;

  // Ends the application in good order, after the present job; the process answers `exitCode`.
  virtual void terminate(int exitCode) = 0;

  // The wall clock.
  virtual Date now() const = 0;
};

}  // namespace kelvane
