// What a modal alert says and how it is answered, whoever shows it. Main thread.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>

#include "platform/view_tree.h"
#include "platform/windows.h"

namespace kelvane {

// Which of the alert's own buttons was pressed, by the index that a platform reports; absent for
// the default button of an alert without any, and for every other end.
std::optional<std::size_t> pressedButton(std::size_t buttons, std::ptrdiff_t reported);

// An alert of a view tree, for a platform that makes the whole of it at once. Each text has lines
// of its own.
Alert alertOf(const ViewNode& node);

// One alert from the request to its answer, where the platform runs it in a loop of its own that
// begins in a later turn.
class AlertRun {
 public:
  AlertRun(const Alert& alert, std::function<void(int)> done);

  // Its turn has come. False: it was aborted while it waited, and is not shown at all.
  [[nodiscard]] bool begin();
  // True when it is shown, so that its loop has to be ended; nothing when it has ended, or was
  // aborted before.
  [[nodiscard]] bool abort();
  bool isShown() const { return state_ == State::shown; }
  // Its loop has ended, or it was not shown. Calls `done`, the first time.
  void end(std::ptrdiff_t reported);

 private:
  enum class State { waiting, shown, ended };

  const std::size_t buttons_;
  std::function<void(int)> done_;
  State state_ = State::waiting;
  bool isAborted_ = false;
};

}  // namespace kelvane
