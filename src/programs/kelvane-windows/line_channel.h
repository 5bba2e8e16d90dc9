// Lines to and from the resident program over a socket, on the main context. Main thread.
#pragma once

#include <functional>
#include <string>

#include <glib.h>

#include "platform/linux/files/unique_fd.h"
#include "platform/linux/windows/line_buffer.h"

namespace kelvane {

class LineChannel {
 public:
  struct Events {
    std::function<void(const std::string& line)> line;
    // The other side has ended it, or it broke: then there is an error, on one line. Nothing is
    // told after that. None of the two may destroy the channel.
    std::function<void(const std::string& error)> ended;
  };

  LineChannel(UniqueFd fd, Events events);
  ~LineChannel();
  LineChannel(const LineChannel&) = delete;
  LineChannel& operator=(const LineChannel&) = delete;

  // Never waits: what can't be written at once is kept until it can be.
  void send(const std::string& line);
  // Tells nothing more and writes nothing more.
  void end();

 private:
  void readSome();
  void writeSome();
  void endWith(const std::string& error);

  UniqueFd fd_;
  Events events_;
  LineBuffer lines_;
  std::string unwritten_;
  guint readSource_ = 0;
  guint writeSource_ = 0;
};

}  // namespace kelvane
