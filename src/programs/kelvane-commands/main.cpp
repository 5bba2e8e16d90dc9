// What `kelvane` becomes when it is given a command or an option.

#include "programs/kelvane-commands/command_line.h"

int main(int argumentCount, char** arguments) {
  return kelvane::runCommandLine(argumentCount, arguments);
}
