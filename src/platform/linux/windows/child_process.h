// A process of ours that is waited for, also when nobody is interested in it any more. Main thread.
#pragma once

#include <functional>
#include <memory>

#include <glib.h>

#include "platform/run_loop.h"

namespace kelvane {

class ChildProcess {
 public:
  // `exited` is called once, with the status of waitpid(), in a later turn of the default main
  // context.
  static std::shared_ptr<ChildProcess> follow(GPid pid, std::function<void(int status)> exited);

  // `exited` is not called any more.
  void forget() { exited_ = nullptr; }
  void kill() const;
  // It is about to end, and is killed when it has not within five seconds.
  void expectEnd(RunLoop& loop);

 private:
  ChildProcess(GPid pid, std::function<void(int)> exited);

  const GPid pid_;
  bool isThere_ = true;
  std::function<void(int)> exited_;
  std::unique_ptr<Timer> patience_;
};

}  // namespace kelvane
