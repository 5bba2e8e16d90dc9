// The end of the process for what can't be. Any thread.
#pragma once

#include <cstdio>
#include <cstdlib>

namespace kelvane {

// Says why on standard error and aborts.
[[noreturn]] inline void endWithFatalError(const char* reason) {
  std::fprintf(stderr, "kelvane: fatal error: %s\n", reason);
  std::abort();
}

}  // namespace kelvane
