// The command `kelvane doctor`: what the desktop offers Kelvane, and what to do about what it
// lacks. Main thread.
#pragma once

#include <iosfwd>

#include "platform/linux/power/linux_power_sources.h"

namespace kelvane {

// Prints what it finds, as lines or as JSON. Answers the exit code: 0, or 1 when the item can't be
// seen.
int runDoctorCommand(const PowerOptions& power, bool asJson, std::ostream& out);

}  // namespace kelvane
