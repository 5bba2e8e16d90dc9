// What the desktop starts at login: waits for the session bus, then becomes Kelvane.

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "programs/kelvane-autostart-helper/bus_wait.h"
#include "programs/kelvane/programs.h"

int main() {
  const std::string socket = kelvane::sessionBusSocket(std::getenv("DBUS_SESSION_BUS_ADDRESS"),
                                                       std::getenv("XDG_RUNTIME_DIR"));
  if (!socket.empty()) {
    const std::string failure = kelvane::waitForSocket(socket, std::chrono::seconds(60));
    if (!failure.empty()) {
      std::fprintf(stderr, "kelvane: waited for the session bus at %s: %s\n", socket.c_str(),
                   failure.c_str());
      return 1;
    }
  }
  char name[] = "kelvane";
  std::string atLogin = kelvane::kAtLoginOption;
  char* const arguments[] = {name, atLogin.data(), nullptr};
  kelvane::becomeProgram(name, arguments);
  return 1;
}
