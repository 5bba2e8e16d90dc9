#include "platform/linux/windows/open_menu.h"

#include <utility>

namespace kelvane {
namespace {

// Deeper than any menu a person reads; a menu that contains itself ends here.
constexpr int kDeepest = 8;

}  // namespace

OpenMenu::OpenMenu(RunLoopQueue& loop, Menu& menu, std::uint32_t number)
    : menu_(menu), number_(number) {
  menu_.needsUpdate();
  lines_ = take(menu_.lines(), 1);
  hold_.emplace(loop, RunLoopMode::tracking);
  // May rebuild the lines.
  menu_.willOpen();
}

OpenMenu::~OpenMenu() {
  hold_.reset();
  menu_.didClose();
}

std::vector<ShownLine> OpenMenu::take(const std::vector<MenuLine>& lines, int depth) {
  std::vector<ShownLine> taken;
  for (const MenuLine& line : lines) {
    ShownLine shown{.line = static_cast<std::uint32_t>(actions_.size()),
                    .kind = line.kind,
                    .title = line.title,
                    .attributedTitle = line.attributedTitle,
                    .isEnabled = line.isEnabled,
                    .keyEquivalent = line.keyEquivalent,
                    .isAlternate = line.isAlternate};
    actions_.push_back(line.isEnabled ? line.action : nullptr);
    if (line.submenu && depth < kDeepest) shown.submenu = take(line.submenu->lines(), depth + 1);
    taken.push_back(std::move(shown));
  }
  return taken;
}

std::function<void()> OpenMenu::actionOf(std::uint32_t line) const {
  return line < actions_.size() ? actions_[line] : nullptr;
}

}  // namespace kelvane
