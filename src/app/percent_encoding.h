// Text inside an address. Any thread.
#pragma once

#include <string>
#include <string_view>

namespace kelvane {

// The text as a component of an address: letters, digits, "-", ".", "_" and "~" as they are, each
// other byte as "%XX". UTF-8 stays UTF-8 and any byte survives.
std::string percentEncoded(std::string_view text);

}  // namespace kelvane
