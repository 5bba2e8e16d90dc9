// The `kelvane` program: resident without a command, else the command.

#include <malloc.h>

#include "programs/kelvane/command_line.h"
#include "programs/kelvane/resident.h"

int main(int argumentCount, char** arguments) {
  // One pool of memory for all threads: GDBus has one that would keep a pool of its own for little.
  mallopt(M_ARENA_MAX, 1);
  // Large blocks go back to the system when they are freed; the default grows this limit with use.
  mallopt(M_MMAP_THRESHOLD, 64 * 1024);
  // The usual start leaves the code of the command line, which is large, on the disk.
  if (argumentCount <= 1) return kelvane::runResident(kelvane::environmentPowerOptions());
  return kelvane::runCommandLine(argumentCount, arguments);
}
