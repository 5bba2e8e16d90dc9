// The system bus, asked for without waiting. Main thread.
#pragma once

#include <functional>
#include <utility>

#include "platform/linux/glib/bus_connection.h"

namespace kelvane {

// Gets the process's shared connection to the system bus. `done` is called once, in a later turn of
// the default main context, with null when there is no bus; never after this object was destroyed.
class SystemBusRequest {
 public:
  using Done = std::function<void(BusConnection* bus)>;

  explicit SystemBusRequest(Done done)
      : done_(std::move(done)), connection_(BusConnection::share(BusKind::system)) {
    if (connection_ && connection_->state() == BusConnection::State::opening)
      opened_ = connection_->observe([this] { tell(); });
    else
      idle_ = g_idle_add_full(
          G_PRIORITY_DEFAULT,
          [](gpointer self) -> gboolean {
            auto* request = static_cast<SystemBusRequest*>(self);
            request->idle_ = 0;
            request->tell();
            return G_SOURCE_REMOVE;
          },
          this, nullptr);
  }
  ~SystemBusRequest() {
    if (idle_) g_source_remove(idle_);
  }
  SystemBusRequest(const SystemBusRequest&) = delete;
  SystemBusRequest& operator=(const SystemBusRequest&) = delete;

 private:
  void tell() {
    // The callee may destroy this; the connection is from here on kept by those who use it.
    const Done done = std::move(done_);
    const BusPtr connection = std::move(connection_);
    opened_.reset();
    if (!done) return;
    done(connection && connection->state() == BusConnection::State::ready ? connection.get()
                                                                          : nullptr);
  }

  Done done_;
  BusPtr connection_;
  BusObservation opened_;
  guint idle_ = 0;
};

}  // namespace kelvane
