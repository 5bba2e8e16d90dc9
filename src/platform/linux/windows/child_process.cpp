#include "platform/linux/windows/child_process.h"

#include <csignal>
#include <utility>

namespace kelvane {
namespace {

constexpr double kEndTakes = 5;  // seconds

}  // namespace

ChildProcess::ChildProcess(GPid pid, std::function<void(int)> exited)
    : pid_(pid), exited_(std::move(exited)) {}

std::shared_ptr<ChildProcess> ChildProcess::follow(GPid pid, std::function<void(int)> exited) {
  const std::shared_ptr<ChildProcess> child(new ChildProcess(pid, std::move(exited)));
  g_child_watch_add_full(
      G_PRIORITY_DEFAULT, pid,
      [](GPid ended, gint status, gpointer data) {
        const auto self = *static_cast<std::shared_ptr<ChildProcess>*>(data);
        g_spawn_close_pid(ended);
        self->isThere_ = false;
        self->patience_.reset();
        if (const auto call = std::exchange(self->exited_, nullptr)) call(status);
      },
      new std::shared_ptr<ChildProcess>(child),
      [](gpointer data) { delete static_cast<std::shared_ptr<ChildProcess>*>(data); });
  return child;
}

void ChildProcess::kill() const {
  if (isThere_) ::kill(pid_, SIGKILL);
}

void ChildProcess::expectEnd(RunLoop& loop) {
  if (isThere_ && !patience_) patience_ = loop.startTimer(kEndTakes, false, [this] { kill(); });
}

}  // namespace kelvane
