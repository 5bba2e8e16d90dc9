// The command line of `kelvane`. Main thread.
#pragma once

namespace kelvane {

// Runs what the arguments ask for, which may be to become the resident program, and answers the
// exit code: 0, 1 for what failed, 2 for wrong use.
int runCommandLine(int argumentCount, char** arguments);

}  // namespace kelvane
