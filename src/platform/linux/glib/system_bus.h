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

  explicit SystemBusRequest(Done done) : done_(std::make_shared<Done>(std::move(done))) {
    // Not cancellable: all that wait for the shared connection would fail together.
    g_bus_get(
        G_BUS_TYPE_SYSTEM, nullptr,
        [](GObject*, GAsyncResult* result, gpointer data) {
          const std::unique_ptr<std::weak_ptr<Done>> waiting(
              static_cast<std::weak_ptr<Done>*>(data));
          GError* rawError = nullptr;
          const GObjectPtr<GDBusConnection> bus(g_bus_get_finish(result, &rawError));
          const GErrorPtr error(rawError);
          if (bus) g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
          if (const auto call = waiting->lock()) (*call)(bus.get());
        },
        new std::weak_ptr<Done>(done_));
  }
  SystemBusRequest(const SystemBusRequest&) = delete;
  SystemBusRequest& operator=(const SystemBusRequest&) = delete;

 private:
  std::shared_ptr<Done> done_;
};

}  // namespace kelvane
