// Kelvane's own programs: one that stays resident and is kept small, and those that it, or the
// desktop, starts beside it. Any thread; `becomeProgram` before another thread was started.
#pragma once

#include <string>

namespace kelvane {

// By this option of kelvane the login helper says that not the user starts it.
inline constexpr const char* kAtLoginOption = "--at-login";

// The absolute path of a program of Kelvane: the one of that name beside the running one, else
// among the installed ones (libexec/kelvane, bin). Empty when there is none.
std::string programPath(const std::string& name);

// Becomes another program of Kelvane with these arguments: that of `programPath`, else the one of
// that name in the search path. Returns only when there is none, after one line on standard error.
void becomeProgram(const std::string& name, char* const* arguments);

}  // namespace kelvane
