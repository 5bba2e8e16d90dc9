// The resident program. Everything the user tells it on the command line is the business of another
// one, so that it stays small in memory for the whole day.

#include <string_view>

#include <malloc.h>

#include "programs/kelvane/programs.h"
#include "programs/kelvane/resident.h"

int main(int argumentCount, char** arguments) {
  const bool isAtLogin =
      argumentCount == 2 && std::string_view(arguments[1]) == kelvane::kAtLoginOption;
  if (argumentCount > 1 && !isAtLogin) {
    kelvane::becomeProgram("kelvane-commands", arguments);
    return 1;
  }
  // One pool of memory for all threads: GLib has one for the signals of the system.
  mallopt(M_ARENA_MAX, 1);
  // Large blocks go back to the system when they are freed; the default grows this limit with use.
  mallopt(M_MMAP_THRESHOLD, 64 * 1024);
  return kelvane::runResident(kelvane::environmentPowerOptions(),
                              isAtLogin ? kelvane::Start::atLogin : kelvane::Start::byHand);
}
