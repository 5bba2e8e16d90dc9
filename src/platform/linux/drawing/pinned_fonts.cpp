#include "platform/linux/drawing/pinned_fonts.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <fontconfig/fontconfig.h>

namespace {
kelvane::FontconfigCalls calls;
}

// The linker sends every call of FcX to __wrap_FcX and leaves the original as __real_FcX;
// libraries refer to the wrappers too, so they must be visible.
extern "C" {
FcBool __real_FcInit();
void __real_FcFini();
FcPattern* __real_FcFontMatch(FcConfig*, FcPattern*, FcResult*);

[[gnu::visibility("default")]] FcBool __wrap_FcInit();
[[gnu::visibility("default")]] void __wrap_FcFini();
[[gnu::visibility("default")]] FcPattern* __wrap_FcFontMatch(FcConfig*, FcPattern*, FcResult*);

FcBool __wrap_FcInit() {
  ++calls.starts;
  return __real_FcInit();
}
void __wrap_FcFini() {
  ++calls.ends;
  __real_FcFini();
}
FcPattern* __wrap_FcFontMatch(FcConfig* config, FcPattern* pattern, FcResult* result) {
  ++calls.matches;
  return __real_FcFontMatch(config, pattern, result);
}
}

namespace kelvane {

PinnedFonts::PinnedFonts(const std::vector<std::string>& families) {
  folder_ = (std::filesystem::temp_directory_path() / "kelvane-fonts-XXXXXX").string();
  if (!mkdtemp(folder_.data())) {
    std::perror("cannot make a folder for the fonts' configuration");
    std::abort();
  }
  std::ofstream file(folder_ + "/fonts.conf");
  file << "<?xml version=\"1.0\"?>\n<!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">\n<fontconfig>\n"
       << "<dir>/usr/share/fonts</dir><dir>/usr/local/share/fonts</dir>\n"
       << "<dir prefix=\"xdg\">fonts</dir>\n"
       << "<cachedir>/var/cache/fontconfig</cachedir>\n"
       << "<cachedir prefix=\"xdg\">fontconfig</cachedir>\n"
       << "<selectfont><rejectfont><pattern></pattern></rejectfont><acceptfont>\n";
  for (const std::string& family : families) {
    file << "<pattern><patelt name=\"family\"><string>" << family
         << "</string></patelt></pattern>\n";
  }
  file << "</acceptfont></selectfont>\n</fontconfig>\n";
  file.close();
  setenv("FONTCONFIG_FILE", (folder_ + "/fonts.conf").c_str(), 1);
}

PinnedFonts::~PinnedFonts() {
  unsetenv("FONTCONFIG_FILE");
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

FontconfigCalls fontconfigCalls() { return calls; }

}  // namespace kelvane
