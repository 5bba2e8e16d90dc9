// The command `kelvane settings list | get KEY | set KEY VALUE`. Main thread.
#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "platform/preferences.h"

namespace kelvane {

// `arguments` is what comes after "settings". Values are JSON: true or false, or an array of levels
// from 0 to 1. Migrates the preferences first. Answers the exit code: 0; 1 when a setting could not
// be written, which the preferences have said; 2 for wrong use, an unknown key or a bad value, told
// in one line on `errors`.
int runSettingsCommand(const std::vector<std::string>& arguments, Preferences& preferences,
                       std::ostream& out, std::ostream& errors);

}  // namespace kelvane
