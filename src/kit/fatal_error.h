// The end of the process for a programming error. Any thread.
#pragma once

#include <string_view>

namespace kelvane {

// Writes "kelvane: fatal error: " and the reason to standard error and aborts.
[[noreturn]] void fatalError(std::string_view reason);

}  // namespace kelvane
