#include "kit/fatal_error.h"

#include <cstdio>
#include <cstdlib>

namespace kelvane {

void fatalError(std::string_view reason) {
  std::fprintf(stderr, "kelvane: fatal error: %.*s\n", static_cast<int>(reason.size()),
               reason.data());
  std::abort();
}

}  // namespace kelvane
