#include "programs/kelvane/version.h"

namespace kelvane {

ApplicationInformation builtInformation() {
  return {.name = "Kelvane",
          .identifier = "org.kelvane.Kelvane",
          .version = KELVANE_VERSION,
          .build = KELVANE_BUILD,
          .copyright = "Copyright © 2026 the Kelvane developers. MIT licence."};
}

}  // namespace kelvane
