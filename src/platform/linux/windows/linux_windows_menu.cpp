// The item's menu among the windows.

#include <cstdio>
#include <utility>

#include "platform/linux/windows/linux_windows.h"

namespace kelvane {
namespace {

// From the press that takes the focus from the menu to the host's word of the click that it is.
constexpr double kSameClick = 0.3;  // seconds

}  // namespace

void LinuxWindows::toggleMenu(Menu& menu, std::optional<Point> anchor) {
  if (menu_) return closeMenu();
  if (std::exchange(menuJustClosed_, nullptr)) return;
  if (loop_.mode() == RunLoopMode::modal) {
    if (program_) program_->send(ActivateWindows{std::exchange(token_, ""), anchor});
    return;
  }
  if (!ensureProgram()) {
    if (!std::exchange(hasSaidNoMenu_, true))
      std::fprintf(stderr, "kelvane: no window can be shown here, so a click opens no menu\n");
    return;
  }
  menu_ = std::make_unique<OpenMenu>(loop_, menu, ++last_);
  program_->send(ShowMenu{menu_->number(), menu_->lines(), anchor, std::exchange(token_, "")});
}

void LinuxWindows::closeMenu() {
  if (menu_ && program_) program_->send(CloseMenu{menu_->number()});
  endMenu(nullptr);
}

void LinuxWindows::menuChosen(const MenuChosen& chosen) {
  if (menu_ && menu_->number() == chosen.menu) endMenu(menu_->actionOf(chosen.line));
}

void LinuxWindows::menuClosed(const MenuClosed& closed) {
  if (!menu_ || menu_->number() != closed.menu) return;
  if (closed.hasLostFocus)
    menuJustClosed_ = loop_.startTimer(kSameClick, false, [this] { menuJustClosed_.reset(); });
  endMenu(nullptr);
}

void LinuxWindows::endMenu(const std::function<void()>& action) {
  if (!menu_) return;
  std::exchange(menu_, nullptr).reset();
  if (action) loop_.async(action);
  endProgramLater();
}

}  // namespace kelvane
