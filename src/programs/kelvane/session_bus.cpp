#include "programs/kelvane/session_bus.h"

#include <cstdio>
#include <string>

namespace kelvane {

BusPtr connectToSessionBus() {
  std::string problem;
  BusPtr bus = BusConnection::share(BusKind::session, &problem);
  if (bus && bus->waitUntilReady()) return bus;
  std::fprintf(stderr, "kelvane: there is no session bus: %s\n",
               bus ? "it refuses us" : problem.c_str());
  return nullptr;
}

}  // namespace kelvane
