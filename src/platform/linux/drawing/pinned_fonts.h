// For tests: fontconfig as if only the named families were installed, so that results don't depend
// on the machine's fonts. One test at a time; fonts found before stay as they are.
#pragma once

#include <string>
#include <vector>

namespace kelvane {

class PinnedFonts {
 public:
  // Fonts are looked for in fontconfig's usual folders; families not installed are simply missing.
  explicit PinnedFonts(const std::vector<std::string>& families);
  ~PinnedFonts();
  PinnedFonts(const PinnedFonts&) = delete;
  PinnedFonts& operator=(const PinnedFonts&) = delete;

 private:
  std::string folder_;
};

// Calls of fontconfig's functions so far, counted by the linker's wrappers.
struct FontconfigCalls {
  int starts = 0;
  int ends = 0;
  int matches = 0;
  bool operator==(const FontconfigCalls&) const = default;
};
FontconfigCalls fontconfigCalls();

}  // namespace kelvane
