// One question to fontconfig: which font file serves. Main thread; no state is kept.
#pragma once

#include <optional>
#include <string>

#include "platform/text.h"

namespace kelvane {

struct FontFile {
  std::string path;
  int index = 0;  // face number, with a named instance in the upper 16 bits, as FreeType takes it
  bool operator==(const FontFile&) const = default;
};

// The outline font nearest to `family` (see `FontFaces`) and `weight`, never a colour or bitmap
// font; with `character`, one that fontconfig says has it. Absent when there is none.
//
// Loads fontconfig's configuration and gives all its memory back before it returns (3 to 6 ms with
// warm caches), so it is to be asked rarely.
std::optional<FontFile> matchFont(const std::string& family, FontWeight weight,
                                  std::optional<char32_t> character);

// The weight on the scale of variable fonts' "wght" axis: 400 or 500.
double openTypeWeight(FontWeight weight);

}  // namespace kelvane
