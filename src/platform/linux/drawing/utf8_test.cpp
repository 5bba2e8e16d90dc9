#include "platform/linux/drawing/utf8.h"

#include <gtest/gtest.h>

namespace kelvane {
namespace {

TEST(Utf8, decodesAndReplacesWhatIsNotText) {
  const struct {
    std::string bytes;
    std::u32string characters;
  } rows[] = {
      {"", U""},
      {"57\xEF\xB9\xAA", U"57\uFE6A"},
      {"\xE2\x9A\xA1\xEF\xB8\x8E ", U"\u26A1\uFE0E "},
      {"\xC3\xA9\xF0\x9F\x98\x80", U"\u00E9\U0001F600"},
      {"\xF4\x8F\xBF\xBF", U"\U0010FFFF"},
      {std::string("a\0b", 3), std::u32string(U"a\0b", 3)},
      {"\xEF\xB9", U"\uFFFD"},                            // cut short at the end
      {"\xEF\xB9g", U"\uFFFDg"},                          // cut short by another character
      {"\xC3\xC3\xA9", U"\uFFFD\u00E9"},                  // a lead byte after a lead byte
      {"\x80\xBF", U"\uFFFD\uFFFD"},                      // nothing to follow
      {"\xC0\xAF", U"\uFFFD\uFFFD"},                      // overlong
      {"\xE0\x80\xAF", U"\uFFFD\uFFFD\uFFFD"},            // overlong
      {"\xED\xA0\x80", U"\uFFFD\uFFFD\uFFFD"},            // a surrogate
      {"\xF4\x90\x80\x80", U"\uFFFD\uFFFD\uFFFD\uFFFD"},  // above the last character
      {"\xFF", U"\uFFFD"},
  };
  for (const auto& row : rows) EXPECT_EQ(decodeUtf8(row.bytes), row.characters) << row.bytes;
}

}  // namespace
}  // namespace kelvane
