// The resident program: Kelvane in the tray until it is asked to end. Main thread.
#pragma once

#include "platform/linux/power/linux_power_sources.h"

namespace kelvane {

// Where the battery is read unless the command line says otherwise: KELVANE_POWER_SUPPLY names
// another tree, KELVANE_UPOWER=no leaves UPower out.
PowerOptions environmentPowerOptions();

enum class Start { byHand, atLogin };

// Answers the exit code: 0 when it was asked to end, the session ended, or it runs already and was
// opened again; 1 when it could not start or refuses this computer, said on standard error. Started
// at login it tells the user when no tray comes.
int runResident(const PowerOptions& power, Start start);

}  // namespace kelvane
