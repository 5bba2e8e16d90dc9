// Whether this computer is a laptop. Main thread.
#pragma once

namespace kelvane {

class PowerSources;

// True when a power source is the laptop's own battery and is there: "Type" is "InternalBattery"
// and "Is Present" is true. A bay without its battery counts as no battery.
bool hasBattery(PowerSources& powerSources);

}  // namespace kelvane
