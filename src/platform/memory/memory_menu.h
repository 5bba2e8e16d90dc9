// A menu with lines that a test or script gives it, and a record of its host's calls. Main thread.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/menu.h"

namespace kelvane {

class MemoryMenu : public Menu {
 public:
  MemoryMenu() = default;
  explicit MemoryMenu(std::vector<MenuLine> lines) : lines_(std::move(lines)) {}

  const std::vector<MenuLine>& lines() const override { return lines_; }
  void needsUpdate() override {
    ++updates;
    if (make) lines_ = make();
  }
  void willOpen() override { history.push_back("opened"); }
  void didClose() override { history.push_back("closed"); }

  // Makes the lines anew at every update, as the application does; empty: they stay.
  std::function<std::vector<MenuLine>()> make;
  int updates = 0;
  std::vector<std::string> history;

 private:
  std::vector<MenuLine> lines_;
};

}  // namespace kelvane
