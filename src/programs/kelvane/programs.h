// Kelvane's own programs: one that stays resident and is kept small, and those it hands over to.
// Main thread, before anything else was started.
#pragma once

#include <string>

namespace kelvane {

// Becomes another program of Kelvane with these arguments: the one of that name beside the running
// one, else in the folder for such programs (libexec/kelvane), else in the search path. Returns
// only when there is none, after one line on standard error.
void becomeProgram(const std::string& name, char* const* arguments);

}  // namespace kelvane
