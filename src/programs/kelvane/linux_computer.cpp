#include "programs/kelvane/linux_computer.h"

#include <optional>
#include <string>
#include <utility>

#include "programs/kelvane/foreign_text.h"
#include "programs/kelvane/programs.h"

namespace kelvane {
namespace {

TrayOptions trayOptions(LinuxComputer& computer, BusConnection* sessionBus) {
  TrayOptions options;
  options.sessionBus = sessionBus;
  options.activated = [&computer](Menu* menu, std::optional<Point> where) {
    computer.itemPlace = where;
    if (menu) computer.windows.toggleMenu(*menu, where);
  };
  options.menuRemoved = [&computer] { computer.windows.closeMenu(); };
  options.activationToken = [&computer](const std::string& token) {
    computer.windows.setActivationToken(token);
  };
  options.windowAppearance = [&computer](std::optional<bool> isDark) {
    computer.windows.setDark(isDark);
  };
  options.replaceUncoveredCharacters = [&computer](std::string text) {
    return replaceUncoveredCharacters(computer.fonts, std::move(text));
  };
  return options;
}

WindowOptions windowOptions(LinuxComputer& computer) {
  WindowOptions options;
  if (std::string path = programPath("kelvane-windows"); !path.empty())
    options.programs.push_back(std::move(path));
  options.isMotionReduced = [&computer] { return computer.statusBar.prefersReducedMotion(); };
  options.isItemShown = [&computer] { return computer.statusBar.isRegistered(); };
  options.itemPlace = [&computer] { return computer.itemPlace; };
  return options;
}

}  // namespace

LinuxComputer::LinuxComputer(GlibRunLoop& loop, BusConnection* sessionBus,
                             const PowerOptions& power)
    : runLoop(loop),
      supplies(std::make_shared<TurnSupplies>(power.directory)),
      registry(supplies),
      powerSources(runLoop, power, supplies),
      statusBar(runLoop, fonts, trayOptions(*this, sessionBus)),
      noticeBoard(sessionBus, runLoop),
      windows(runLoop, noticeBoard, windowOptions(*this)),
      loginItems(userAutostartFolder(), programPath("kelvane-autostart-helper")),
      workspace(sessionBus) {
  systemInfo.setReducedMotionSource([this] { return statusBar.prefersReducedMotion(); });
  systemInfo.setLowPowerModeObserver([this] { statusBar.menuChanged(); });
}

}  // namespace kelvane
