// For tests on a message bus of their own: dbus-daemon, connections to it, and a main loop that
// runs until something is true. Tests fail when there is no dbus-daemon. Main thread.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include <gio/gio.h>

#include "platform/linux/glib/bus_connection.h"
#include "platform/linux/glib/gobject_ptr.h"

namespace kelvane {

// Iterates the main context until `done` or for 5 seconds; whether it was done.
bool runUntil(const std::function<bool()>& done);

// Iterates the main context until nothing is ready.
void runUntilIdle();

// What the bus itself is asked, answered at once; whatever `connection` sent before has then been
// passed on.
BusReply askBus(BusConnection* connection, const char* method, GVariant* arguments = nullptr);

// Counts the messages that reach a connection, by the end of their path and their member; an empty
// one is any.
class Arrivals {
 public:
  Arrivals(const BusPtr& connection, std::string path, std::string member);
  int count() const { return count_; }

 private:
  BusPtr connection_;
  std::string path_;
  std::string member_;
  int count_ = 0;
  BusSlotPtr filter_;
};

struct GDBusNodeInfoDeleter {
  void operator()(GDBusNodeInfo* info) const { g_dbus_node_info_unref(info); }
};
using GDBusNodeInfoPtr = std::unique_ptr<GDBusNodeInfo, GDBusNodeInfoDeleter>;

class PrivateBus {
 public:
  // `activatable`: the folder with the .service files of what the bus may start; none when empty.
  // Throws when there is no dbus-daemon.
  explicit PrivateBus(const std::string& activatable = "");
  ~PrivateBus();
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

  const std::string& address() const { return address_; }
  BusPtr connect() const;
  // A connection of another library, for what stands for other programs.
  GObjectPtr<GDBusConnection> connectStranger() const;

 private:
  std::string folder_;
  std::string address_;
  GObjectPtr<GSubprocess> daemon_;
};

}  // namespace kelvane
