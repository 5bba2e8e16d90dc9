#include "programs/kelvane/linux_computer.h"

#include <utility>

#include "programs/kelvane/foreign_text.h"
#include "programs/kelvane/programs.h"

namespace kelvane {
namespace {

TrayOptions trayOptions(GDBusConnection* sessionBus, FontFaces& fonts) {
  TrayOptions options;
  options.sessionBus = sessionBus;
  options.replaceUncoveredCharacters = [&fonts](std::string text) {
    return replaceUncoveredCharacters(fonts, std::move(text));
  };
  return options;
}

}  // namespace

LinuxComputer::LinuxComputer(GlibRunLoop& loop, GDBusConnection* sessionBus,
                             const PowerOptions& power)
    : runLoop(loop),
      registry(power.directory),
      powerSources(runLoop, power),
      statusBar(runLoop, fonts, trayOptions(sessionBus, fonts)),
      noticeBoard(sessionBus, runLoop),
      loginItems(userAutostartFolder(), programPath("kelvane-autostart-helper")),
      workspace(sessionBus) {
  systemInfo.setLowPowerModeObserver([this] { statusBar.menuChanged(); });
}

}  // namespace kelvane
