// The item's menu while the window program shows it. Main thread.
//
// From its making until its end the run loop is in its tracking mode and the menu is told that it
// is open; its lines are those of its making, whatever is rebuilt meanwhile.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "platform/linux/windows/window_protocol.h"
#include "platform/menu.h"
#include "platform/portable/run_loop_queue.h"

namespace kelvane {

class OpenMenu {
 public:
  // Both outlive this. The menu is asked to update first.
  OpenMenu(RunLoopQueue& loop, Menu& menu, std::uint32_t number);
  ~OpenMenu();
  OpenMenu(const OpenMenu&) = delete;
  OpenMenu& operator=(const OpenMenu&) = delete;

  std::uint32_t number() const { return number_; }
  const std::vector<ShownLine>& lines() const { return lines_; }
  // What choosing a line does; empty for one that can't be chosen, or is not there.
  std::function<void()> actionOf(std::uint32_t line) const;

 private:
  std::vector<ShownLine> take(const std::vector<MenuLine>& lines, int depth);

  Menu& menu_;
  const std::uint32_t number_;
  std::vector<std::function<void()>> actions_;  // by the numbers of their lines
  std::vector<ShownLine> lines_;
  std::optional<RunLoopQueue::ModeScope> hold_;
};

}  // namespace kelvane
