// The system bus, asked for without waiting. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <utility>

#include <gio/gio.h>

#include "platform/linux/glib/glib_ptr.h"

namespace kelvane {

// Gets the process's shared connection to the system bus. `done` is called once, in a later turn of
// the default main context, with null when there is no bus; never after this object was destroyed.
// The connection's end does not end the process.
class SystemBusRequest {
 public:
  using Done = std::function<void(GDBusConnection* bus)>;

  explicit SystemBusRequest(Done done) : cancellable_(g_cancellable_new()) {
    g_bus_get(
        G_BUS_TYPE_SYSTEM, cancellable_.get(),
        [](GObject*, GAsyncResult* result, gpointer data) {
          const std::unique_ptr<Done> call(static_cast<Done*>(data));
          GError* rawError = nullptr;
          const GObjectPtr<GDBusConnection> bus(g_bus_get_finish(result, &rawError));
          const GErrorPtr error(rawError);
          if (error && g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_CANCELLED)) return;
          if (bus) g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
          (*call)(bus.get());
        },
        new Done(std::move(done)));
  }
  ~SystemBusRequest() { g_cancellable_cancel(cancellable_.get()); }
  SystemBusRequest(const SystemBusRequest&) = delete;
  SystemBusRequest& operator=(const SystemBusRequest&) = delete;

 private:
  GObjectPtr<GCancellable> cancellable_;
};

}  // namespace kelvane
