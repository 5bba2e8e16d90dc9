// The instance of the application that runs already, for the one that was started after it and for
// commands. Main thread; each function waits for its answer, for a bounded time.
#pragma once

#include <string>

#include "platform/linux/glib/bus_connection.h"

namespace kelvane {

enum class RunningAnswer {
  done,
  notRunning,
  failed,  // it runs and does not answer, or answers with an error
};

// Opens it again, as a second start does.
RunningAnswer activateRunning(BusConnection* bus);

// Asks it to end, and waits until its name is gone.
RunningAnswer quitRunning(BusConnection* bus);

}  // namespace kelvane
