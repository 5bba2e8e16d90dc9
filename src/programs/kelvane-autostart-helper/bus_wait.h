// Waiting for the session bus at login. Any thread; nothing is polled.
#pragma once

#include <chrono>
#include <string>

namespace kelvane {

// The socket to wait for: that of DBUS_SESSION_BUS_ADDRESS, else the bus in XDG_RUNTIME_DIR; both
// may be null. Empty when there is nothing to wait for: an address that names no file is taken as
// there, and without either nobody knows where the bus will be.
std::string sessionBusSocket(const char* address, const char* runtimeFolder);

// Waits until there is a socket of that absolute path; folders on the way to it may be missing too.
// Answers why it gave up, empty when the socket is there.
std::string waitForSocket(const std::string& path, std::chrono::milliseconds patience);

}  // namespace kelvane
