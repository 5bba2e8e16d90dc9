// Characters of a UTF-8 text. Pure, any thread.
#pragma once

#include <string>
#include <string_view>

namespace kelvane {

// Every byte sequence that is not UTF-8 (cut short, overlong, a surrogate, above U+10FFFF) becomes
// one U+FFFD for its longest valid beginning, as the Unicode Standard recommends (chapter 3,
// "U+FFFD Substitution of Maximal Subparts"). Never fails.
std::u32string decodeUtf8(std::string_view text);

}  // namespace kelvane
