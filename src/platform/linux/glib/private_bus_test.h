// For tests on a message bus of their own: dbus-daemon, connections to it, and a main loop that
// runs until something is true. Tests fail when there is no dbus-daemon. Main thread.
#pragma once

#include <functional>
#include <string>

#include <gio/gio.h>

#include "platform/linux/glib/glib_ptr.h"

namespace kelvane {

// Iterates the main context until `done` or for 5 seconds; whether it was done.
bool runUntil(const std::function<bool()>& done);

// Iterates the main context until nothing is ready.
void runUntilIdle();

class PrivateBus {
 public:
  // `activatable`: the folder with the .service files of what the bus may start; none when empty.
  // Throws when there is no dbus-daemon.
  explicit PrivateBus(const std::string& activatable = "");
  ~PrivateBus();
  PrivateBus(const PrivateBus&) = delete;
  PrivateBus& operator=(const PrivateBus&) = delete;

  const std::string& address() const { return address_; }
  GObjectPtr<GDBusConnection> connect() const;

 private:
  std::string folder_;
  std::string address_;
  GObjectPtr<GSubprocess> daemon_;
};

}  // namespace kelvane
