#include "programs/kelvane-windows/line_channel.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <optional>
#include <string_view>
#include <utility>

#include <fcntl.h>
#include <glib-unix.h>
#include <sys/socket.h>

#include "platform/linux/windows/window_protocol.h"

namespace kelvane {
namespace {

constexpr std::size_t kMostUnwritten = std::size_t{1} << 20;  // bytes

bool isForNow(int error) { return error == EAGAIN || error == EWOULDBLOCK || error == EINTR; }

void stop(guint& source) {
  if (source) g_source_remove(std::exchange(source, 0));
}

}  // namespace

LineChannel::LineChannel(UniqueFd fd, Events events)
    : fd_(std::move(fd)), events_(std::move(events)), lines_(kMaximumLine) {
  fcntl(fd_.get(), F_SETFL, fcntl(fd_.get(), F_GETFL) | O_NONBLOCK);
  fcntl(fd_.get(), F_SETFD, FD_CLOEXEC);
  readSource_ = g_unix_fd_add(
      fd_.get(), static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR),
      [](int, GIOCondition, gpointer self) -> gboolean {
        auto* channel = static_cast<LineChannel*>(self);
        channel->readSome();
        return channel->readSource_ != 0;
      },
      this);
}

LineChannel::~LineChannel() { end(); }

void LineChannel::end() {
  stop(readSource_);
  stop(writeSource_);
}

void LineChannel::endWith(const std::string& error) {
  end();
  events_.ended(error);
}

void LineChannel::readSome() {
  std::array<char, 16 * 1024> bytes;
  const ssize_t count = recv(fd_.get(), bytes.data(), bytes.size(), 0);
  if (count < 0) {
    if (!isForNow(errno)) endWith(std::strerror(errno));
    return;
  }
  if (count == 0) {
    endWith(lines_.hasRest() ? "the last line has no end" : "");
    return;
  }
  lines_.add(std::string_view(bytes.data(), static_cast<std::size_t>(count)));
  while (readSource_) {
    const std::optional<std::string> line = lines_.next();
    if (!line) break;
    events_.line(*line);
  }
  if (readSource_ && lines_.isOverlong()) endWith("a line is longer than any may be");
}

void LineChannel::send(const std::string& line) {
  if (!readSource_) return;
  unwritten_ += line;
  writeSome();
}

void LineChannel::writeSome() {
  while (!unwritten_.empty()) {
    const ssize_t count = ::send(fd_.get(), unwritten_.data(), unwritten_.size(), MSG_NOSIGNAL);
    if (count < 0 && isForNow(errno) && unwritten_.size() <= kMostUnwritten) break;
    if (count < 0) {
      // What is still to be read is read, its end included.
      unwritten_.clear();
      break;
    }
    unwritten_.erase(0, static_cast<std::size_t>(count));
  }
  if (unwritten_.empty()) {
    stop(writeSource_);
  } else if (!writeSource_) {
    writeSource_ = g_unix_fd_add(
        fd_.get(), G_IO_OUT,
        [](int, GIOCondition, gpointer self) -> gboolean {
          auto* channel = static_cast<LineChannel*>(self);
          channel->writeSome();
          return channel->writeSource_ != 0;
        },
        this);
  }
}

}  // namespace kelvane
