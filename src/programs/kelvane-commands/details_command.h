// The command `kelvane details`: what automation is told of the battery. Main thread.
#pragma once

#include <iosfwd>
#include <string>

#include "intents/battery_details.h"
#include "platform/linux/power/linux_power_sources.h"
#include "platform/text_formats.h"

namespace kelvane {

struct DetailsOptions {
  PowerOptions power;       // for reading the battery ourselves
  bool asksRunning = true;  // first, the Kelvane that runs
  bool isJson = false;
};

// Four lines for people; "unknown" for what is absent or no number.
std::string plainTextOf(const BatteryDetails& details, TextFormats& formats);

// One object with the names of the four properties; null for what is absent or no finite number.
std::string jsonOf(const BatteryDetails& details);

// Prints the details: those of the running Kelvane when it answers properly within a second, else
// what we read. Answers the exit code: 0.
int runDetailsCommand(const DetailsOptions& options, std::ostream& out);

}  // namespace kelvane
