// The window program as a process of ours: started with one end of a socket pair, spoken to in
// messages. Main thread; nothing here blocks.
//
// It is not trusted: what is not the protocol, and that it does not greet within ten seconds or
// does not read what it is told, is its end. That end is one line on standard error, unless it
// ended with status 0.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

#include "platform/linux/files/unique_fd.h"
#include "platform/linux/windows/child_process.h"
#include "platform/linux/windows/line_buffer.h"
#include "platform/linux/windows/window_protocol.h"
#include "platform/run_loop.h"

namespace kelvane {

class WindowProgram {
 public:
  // Not called inside any call of ours.
  struct Events {
    // May not destroy the program.
    std::function<void(const WindowEvent&)> received;
    // The process is gone, and nothing comes after. May destroy the program.
    std::function<void()> gone;
  };

  // Starts the executable at `path` with our environment, in which GTK is told to leave GL alone,
  // unless something else is said there. Null, and a line on standard error, when it can't be
  // started. The run loop outlives the program.
  static std::unique_ptr<WindowProgram> start(RunLoop& loop, const std::string& path,
                                              const Greeting& greeting, Events events);
  // Lets the process end by itself, but not for ever.
  ~WindowProgram();
  WindowProgram(const WindowProgram&) = delete;
  WindowProgram& operator=(const WindowProgram&) = delete;

  // Kept until the process reads it; lost when it is about to be gone.
  void send(const WindowRequest& request);
  bool hasGreeted() const { return hasGreeted_; }

 private:
  class FdWatch;

  WindowProgram(RunLoop& loop, UniqueFd socket, Events events);

  void write();
  bool readSome();
  void readLine(const std::string& line);
  void finishReading();
  void endStream();
  void fail(std::string reason);
  void exited(int status);

  RunLoop& loop_;
  UniqueFd socket_;  // none once the stream has ended
  Events events_;
  std::shared_ptr<ChildProcess> child_;
  std::unique_ptr<FdWatch> readable_;
  std::unique_ptr<FdWatch> writable_;  // while something is unsent
  std::unique_ptr<Timer> patience_;    // until it has greeted

  LineBuffer lines_{kMaximumLine};
  std::string unsent_;
  bool hasGreeted_ = false;
  std::string reason_;  // why we ended it
};

}  // namespace kelvane
