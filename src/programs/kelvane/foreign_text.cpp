#include "programs/kelvane/foreign_text.h"

#include <string_view>

namespace kelvane {

std::string replaceUncoveredCharacters(FontFaces& fonts, std::string text) {
  constexpr std::string_view kSmallSign = "\uFE6A";
  auto at = text.find(kSmallSign);
  if (at == std::string::npos || fonts.covers(U'\uFE6A')) return text;
  for (; at != std::string::npos; at = text.find(kSmallSign, at + 1))
    text.replace(at, kSmallSign.size(), "%");
  return text;
}

}  // namespace kelvane
