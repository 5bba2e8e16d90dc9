// Other programs, started and left to themselves. Main thread.
#pragma once

#include <string>
#include <vector>

namespace kelvane {

// Starts a program, found in the search path, without a shell: in a session of its own, with our
// environment and output, as nobody's child. What can't be started is said in one line on standard
// error.
void startDetached(const std::vector<std::string>& command);

}  // namespace kelvane
