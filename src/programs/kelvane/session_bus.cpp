#include "programs/kelvane/session_bus.h"

#include <cstdio>

namespace kelvane {

GObjectPtr<GDBusConnection> connectToSessionBus() {
  GError* rawError = nullptr;
  GObjectPtr<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, &rawError));
  const GErrorPtr error(rawError);
  if (error)
    std::fprintf(stderr, "kelvane: there is no session bus: %s\n", error->message);
  else
    g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
  return bus;
}

}  // namespace kelvane
