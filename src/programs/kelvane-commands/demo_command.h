// The command `kelvane demo`: the real application on a scripted battery, time-lapsed. Main thread.
#pragma once

#include <iosfwd>
#include <string>

namespace kelvane {

struct DemoOptions {
  std::string folder;  // for the pictures; empty: a new one in the system's folder for such files
};

// Prints each step, its item and menu, and notices and alerts as they come and go, on `out`; shows
// the item in the tray too when there is one; leaves pictures and a page of them in a folder that
// the last line names. Ends by itself within 30 seconds. Touches no settings of the user. Answers
// the exit code: 0, or 1 when a picture could not be written.
int runDemoCommand(const DemoOptions& options, std::ostream& out, std::ostream& errors);

}  // namespace kelvane
