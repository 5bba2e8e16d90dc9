// The bus of the user's session. Main thread.
#pragma once

#include "platform/linux/glib/bus_connection.h"

namespace kelvane {

// The process's shared connection, ready; null when there is none, after one line on standard
// error. Waits for the bus.
BusPtr connectToSessionBus();

}  // namespace kelvane
