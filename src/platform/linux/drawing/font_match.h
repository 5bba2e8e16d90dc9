// Questions to fontconfig: which font file serves. Main thread.
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

// One at a time. The first question loads fontconfig's configuration (3 to 6 ms with warm caches),
// which stays in memory until it is released.
class FontMatcher {
 public:
  FontMatcher() = default;
  ~FontMatcher() { release(); }
  FontMatcher(const FontMatcher&) = delete;
  FontMatcher& operator=(const FontMatcher&) = delete;

  // The outline font nearest to `family` (see `FontFaces`) and `weight`, never a colour or bitmap
  // font; with `character`, one that fontconfig says has it. Absent when there is none.
  std::optional<FontFile> match(const std::string& family, FontWeight weight,
                                std::optional<char32_t> character);

  // Gives all memory back.
  void release();

 private:
  bool isLoaded_ = false;
};

// The weight on the scale of variable fonts' "wght" axis: 400 or 500.
double openTypeWeight(FontWeight weight);

}  // namespace kelvane
