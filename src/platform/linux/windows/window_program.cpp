#include "platform/linux/windows/window_program.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

#include <glib-unix.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include "platform/linux/glib/glib_ptr.h"

namespace kelvane {
namespace {

constexpr double kGreetingTakes = 10;  // seconds
constexpr std::size_t kMaximumUnsent = 4 * kMaximumLine;

struct StrvDeleter {
  void operator()(char** strings) const { g_strfreev(strings); }
};
using StrvPtr = std::unique_ptr<char*, StrvDeleter>;

StrvPtr environment() {
  char** variables = g_get_environ();
  // A toolkit that loads GL needs ten times the memory.
  variables = g_environ_setenv(variables, "GSK_RENDERER", "cairo", FALSE);
  variables = g_environ_setenv(variables, "GDK_DEBUG", "gl-disable", FALSE);
  variables = g_environ_setenv(variables, "GDK_DISABLE", "gl,vulkan", FALSE);
  return StrvPtr(variables);
}

std::string nameOfEnd(int status) {
  if (WIFSIGNALED(status)) return std::string("ended by ") + strsignal(WTERMSIG(status));
  return "ended with status " + std::to_string(WEXITSTATUS(status));
}

void print(const std::string& text) {
  std::fprintf(stderr, "kelvane: the window program %s\n", text.c_str());
}

}  // namespace

// A condition of a descriptor, heard of in the default main context.
class WindowProgram::FdWatch {
 public:
  FdWatch(int fd, GIOCondition condition, std::function<void()> job)
      : job_(std::move(job)), source_(g_unix_fd_source_new(fd, condition)) {
    const GUnixFDSourceFunc call = [](gint, GIOCondition, gpointer self) -> gboolean {
      const auto copy = static_cast<FdWatch*>(self)->job_;  // which may destroy the watch
      copy();
      return G_SOURCE_CONTINUE;
    };
    g_source_set_callback(source_, G_SOURCE_FUNC(call), this, nullptr);
    g_source_attach(source_, nullptr);
  }
  ~FdWatch() {
    g_source_destroy(source_);
    g_source_unref(source_);
  }
  FdWatch(const FdWatch&) = delete;
  FdWatch& operator=(const FdWatch&) = delete;

 private:
  const std::function<void()> job_;
  GSource* const source_;
};

std::unique_ptr<WindowProgram> WindowProgram::start(RunLoop& loop, const std::string& path,
                                                    const Greeting& greeting, Events events) {
  std::array<int, 2> fds{};
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, fds.data()) != 0) {
    print(std::string("can't be spoken to: ") + std::strerror(errno));
    return nullptr;
  }
  UniqueFd ours(fds[0]);
  const UniqueFd theirs(fds[1]);
  const StrvPtr variables = environment();
  const std::array<const char*, 2> words{path.c_str(), nullptr};
  const int source = theirs.get();
  const int target = kWindowProgramFd;
  GPid pid = 0;
  GError* rawError = nullptr;
  g_spawn_async_with_pipes_and_fds(nullptr, words.data(), variables.get(),
                                   G_SPAWN_DO_NOT_REAP_CHILD, nullptr, nullptr, -1, -1, -1, &source,
                                   &target, 1, &pid, nullptr, nullptr, nullptr, &rawError);
  if (const GErrorPtr error(rawError); error) {
    print(std::string("can't be started: ") + error->message);
    return nullptr;
  }
  std::unique_ptr<WindowProgram> program(
      new WindowProgram(loop, std::move(ours), std::move(events)));
  program->child_ =
      ChildProcess::follow(pid, [self = program.get()](int status) { self->exited(status); });
  program->unsent_ = encode(greeting);
  program->write();
  return program;
}

WindowProgram::WindowProgram(RunLoop& loop, UniqueFd socket, Events events)
    : loop_(loop),
      socket_(std::move(socket)),
      events_(std::move(events)),
      readable_(std::make_unique<FdWatch>(socket_.get(), G_IO_IN, [this] { readSome(); })),
      patience_(loop.startTimer(kGreetingTakes, false, [this] { fail("does not greet"); })) {}

WindowProgram::~WindowProgram() {
  child_->forget();
  child_->expectEnd(loop_);
}

void WindowProgram::send(const WindowRequest& request) {
  if (!socket_) return;
  const std::string line = encode(request);
  if (line.size() > kMaximumLine) return fail("was to be told too much at once");
  unsent_ += line;
  write();
  if (unsent_.size() > kMaximumUnsent) fail("does not read what it is told");
}

void WindowProgram::write() {
  std::size_t sent = 0;
  while (sent < unsent_.size()) {
    const auto count = ::send(socket_.get(), unsent_.data() + sent, unsent_.size() - sent,
                              MSG_NOSIGNAL | MSG_DONTWAIT);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 && errno != EAGAIN) {  // what it said before is still to be read
      sent = unsent_.size();
      child_->expectEnd(loop_);
    }
    if (count < 0) break;
    sent += static_cast<std::size_t>(count);
  }
  unsent_.erase(0, sent);
  if (unsent_.empty())
    writable_.reset();
  else if (!writable_)
    writable_ = std::make_unique<FdWatch>(socket_.get(), G_IO_OUT, [this] { write(); });
}

// False when there was nothing to be read.
bool WindowProgram::readSome() {
  std::array<char, 16384> bytes;
  const auto count = recv(socket_.get(), bytes.data(), bytes.size(), MSG_DONTWAIT);
  if (count < 0 && (errno == EAGAIN || errno == EINTR)) return false;
  if (count <= 0) {
    endStream();
    child_->expectEnd(loop_);
    return false;
  }
  lines_.add({bytes.data(), static_cast<std::size_t>(count)});
  while (socket_) {
    const auto line = lines_.next();
    if (!line) break;
    readLine(*line);
  }
  if (socket_ && lines_.isOverlong()) fail("broke the protocol: a line is too long");
  return static_cast<bool>(socket_);
}

void WindowProgram::readLine(const std::string& line) {
  if (!hasGreeted_) {
    const auto greeting = decodeGreeting(line);
    if (!greeting.message) return fail("broke the protocol: " + greeting.error);
    hasGreeted_ = true;
    patience_.reset();
    return;
  }
  const auto event = decodeEvent(line);
  if (!event.message) return fail("broke the protocol: " + event.error);
  events_.received(*event.message);
}

void WindowProgram::endStream() {
  readable_.reset();
  writable_.reset();
  patience_.reset();
  unsent_.clear();
  socket_ = UniqueFd();
}

void WindowProgram::fail(std::string reason) {
  if (reason_.empty()) reason_ = std::move(reason);
  endStream();
  child_->kill();
}

// What it said last, though others that it started may hold its end and go on.
void WindowProgram::finishReading() {
  for (int rounds = 0; rounds < 64 && socket_ && readSome(); ++rounds) {
  }
}

void WindowProgram::exited(int status) {
  finishReading();
  endStream();
  if (!reason_.empty())
    print(reason_);
  else if (!WIFEXITED(status) || WEXITSTATUS(status) != 0)
    print(nameOfEnd(status));
  else if (!hasGreeted_)
    print("ended without a greeting");
  const auto gone = std::move(events_.gone);
  gone();
}

}  // namespace kelvane
