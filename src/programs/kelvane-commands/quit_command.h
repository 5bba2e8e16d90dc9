// `kelvane quit`: ends the instance that runs. Main thread.
#pragma once

namespace kelvane {

// Returns when it has ended, its settings written. The exit code; 1, after one line on standard
// error, when none runs or it does not end.
int runQuitCommand();

}  // namespace kelvane
