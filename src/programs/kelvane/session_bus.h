// The bus of the user's session. Main thread.
#pragma once

#include <gio/gio.h>

#include "platform/linux/glib/glib_ptr.h"

namespace kelvane {

// The process's shared connection, whose end does not end the process; null when there is none,
// after one line on standard error.
GObjectPtr<GDBusConnection> connectToSessionBus();

}  // namespace kelvane
