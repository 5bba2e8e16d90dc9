#include "programs/kelvane-commands/quit_command.h"

#include <cstdio>

#include "platform/linux/application/running_application.h"
#include "programs/kelvane/session_bus.h"

namespace kelvane {

int runQuitCommand() {
  const auto bus = connectToSessionBus();
  if (!bus) return 1;
  switch (quitRunning(bus.get())) {
    case RunningAnswer::done:
      return 0;
    case RunningAnswer::notRunning:
      std::fprintf(stderr, "kelvane: it is not running\n");
      return 1;
    case RunningAnswer::failed:
      break;
  }
  std::fprintf(stderr, "kelvane: it is running, but does not end\n");
  return 1;
}

}  // namespace kelvane
