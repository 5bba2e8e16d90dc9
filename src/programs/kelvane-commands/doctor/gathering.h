// Finding out the facts: what is on the buses and in the files. Nothing is changed, claimed or
// started for it. Main thread; takes a second for each service that hangs.
#pragma once

#include <string>

#include "platform/linux/power/linux_power_sources.h"
#include "programs/kelvane-commands/doctor/bus_probe.h"
#include "programs/kelvane-commands/doctor/facts.h"

namespace kelvane {

DoctorFacts gatherFacts(const PowerOptions& power);

// The parts of it.
void gatherTray(BusProbe& sessionBus, DoctorFacts& facts);
NotifierFacts gatherNotifier(BusProbe& sessionBus);
PowerFacts gatherPower(const PowerOptions& power);
LoginFacts gatherLogin(const std::string& applicationIdentifier);
PreferencesFacts gatherPreferences();

}  // namespace kelvane
