#include "app/percent_encoding.h"

namespace kelvane {
namespace {

// Not std::isalnum: the user's locale has no say in addresses.
bool isUnreserved(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' ||
         c == '.' || c == '_' || c == '~';
}

}  // namespace

std::string percentEncoded(std::string_view text) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string result;
  result.reserve(text.size());
  for (const char c : text) {
    if (isUnreserved(c)) {
      result += c;
      continue;
    }
    const auto byte = static_cast<unsigned char>(c);
    result += {'%', kDigits[byte >> 4], kDigits[byte & 0xF]};
  }
  return result;
}

}  // namespace kelvane
