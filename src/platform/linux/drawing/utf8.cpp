#include "platform/linux/drawing/utf8.h"

#include <cstddef>
#include <cstdint>

namespace kelvane {
namespace {

// What may follow a lead byte: how many bytes, and the range of the first of them, which is where
// overlong forms, surrogates and values above U+10FFFF show.
struct Lead {
  int following = 0;
  std::uint8_t low = 0x80;
  std::uint8_t high = 0xBF;
  char32_t bits = 0;
};

Lead readLead(std::uint8_t byte) {
  if (byte >= 0xC2 && byte <= 0xDF) return {1, 0x80, 0xBF, byte & 0x1FU};
  if (byte == 0xE0) return {2, 0xA0, 0xBF, 0};
  if (byte == 0xED) return {2, 0x80, 0x9F, 0xD};
  if (byte >= 0xE1 && byte <= 0xEF) return {2, 0x80, 0xBF, byte & 0x0FU};
  if (byte == 0xF0) return {3, 0x90, 0xBF, 0};
  if (byte >= 0xF1 && byte <= 0xF3) return {3, 0x80, 0xBF, byte & 0x07U};
  if (byte == 0xF4) return {3, 0x80, 0x8F, 4};
  return {};
}

}  // namespace

std::u32string decodeUtf8(std::string_view text) {
  std::u32string result;
  for (std::size_t i = 0; i < text.size();) {
    const auto byte = static_cast<std::uint8_t>(text[i++]);
    if (byte < 0x80) {
      result.push_back(byte);
      continue;
    }
    Lead lead = readLead(byte);
    bool isValid = lead.following > 0;
    for (; lead.following > 0 && isValid; --lead.following) {
      const auto next = i < text.size() ? static_cast<std::uint8_t>(text[i]) : std::uint8_t{0};
      isValid = next >= lead.low && next <= lead.high;
      if (!isValid) break;
      lead.bits = (lead.bits << 6) | (next & 0x3FU);
      lead.low = 0x80;
      lead.high = 0xBF;
      ++i;
    }
    result.push_back(isValid ? lead.bits : U'\uFFFD');
  }
  return result;
}

}  // namespace kelvane
