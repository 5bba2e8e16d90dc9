#include "programs/kelvane/linux_computer.h"

#include <utility>

#include "programs/kelvane/foreign_text.h"

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

LinuxComputer::LinuxComputer(GDBusConnection* sessionBus, const PowerOptions& power)
    : registry(power.directory),
      powerSources(runLoop, power),
      statusBar(runLoop, fonts, trayOptions(sessionBus, fonts)) {}

}  // namespace kelvane
