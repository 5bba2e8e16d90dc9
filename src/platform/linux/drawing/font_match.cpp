#include "platform/linux/drawing/font_match.h"

#include <algorithm>
#include <memory>
#include <utility>

#include <fontconfig/fontconfig.h>
#include <malloc.h>

namespace kelvane {
namespace {

const FcChar8* fcText(const std::string& text) {
  return reinterpret_cast<const FcChar8*>(text.c_str());
}

struct PatternDeleter {
  void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
};
using PatternPtr = std::unique_ptr<FcPattern, PatternDeleter>;

void addFamilies(FcPattern* pattern, const std::string& families) {
  for (std::size_t start = 0; start <= families.size();) {
    const std::size_t end = std::min(families.find(',', start), families.size());
    std::string name = families.substr(start, end - start);
    start = end + 1;
    const auto first = name.find_first_not_of(' ');
    if (first == std::string::npos) continue;
    name = name.substr(first, name.find_last_not_of(' ') - first + 1);
    FcPatternAddString(pattern, FC_FAMILY, fcText(name));
  }
  FcPatternAddString(pattern, FC_FAMILY, fcText("sans"));
}

void addCharacter(FcPattern* pattern, char32_t character) {
  FcCharSet* set = FcCharSetCreate();
  FcCharSetAddChar(set, character);
  FcPatternAddCharSet(pattern, FC_CHARSET, set);
  FcCharSetDestroy(set);
}

bool isTrue(FcPattern* pattern, const char* object) {
  FcBool value = FcFalse;
  return FcPatternGetBool(pattern, object, 0, &value) == FcResultMatch && value == FcTrue;
}

bool hasCharacter(FcPattern* pattern, char32_t character) {
  FcCharSet* set = nullptr;
  return FcPatternGetCharSet(pattern, FC_CHARSET, 0, &set) == FcResultMatch &&
         FcCharSetHasChar(set, character) == FcTrue;
}

}  // namespace

void FontMatcher::release() {
  if (!std::exchange(isLoaded_, false)) return;
  FcFini();
#ifdef __GLIBC__
  malloc_trim(0);  // the configuration's small blocks would stay resident otherwise
#endif
}

std::optional<FontFile> FontMatcher::match(const std::string& family, FontWeight weight,
                                           std::optional<char32_t> character) {
  if (!isLoaded_) isLoaded_ = FcInit() == FcTrue;
  if (!isLoaded_) return std::nullopt;

  const PatternPtr wanted(FcPatternCreate());
  addFamilies(wanted.get(), family);
  FcPatternAddInteger(wanted.get(), FC_WEIGHT,
                      weight == FontWeight::medium ? FC_WEIGHT_MEDIUM : FC_WEIGHT_REGULAR);
  // Fontconfig ranks scalable, colour and the characters above the family, so when the best match
  // fails one of them no other font would do either.
  FcPatternAddBool(wanted.get(), FC_SCALABLE, FcTrue);
  FcPatternAddBool(wanted.get(), FC_COLOR, FcFalse);
  if (character) addCharacter(wanted.get(), *character);
  FcConfigSubstitute(nullptr, wanted.get(), FcMatchPattern);
  FcDefaultSubstitute(wanted.get());

  FcResult result = FcResultNoMatch;
  const PatternPtr match(FcFontMatch(nullptr, wanted.get(), &result));
  if (!match || !isTrue(match.get(), FC_OUTLINE) || isTrue(match.get(), FC_COLOR)) {
    return std::nullopt;
  }
  if (character && !hasCharacter(match.get(), *character)) return std::nullopt;

  FcChar8* path = nullptr;
  if (FcPatternGetString(match.get(), FC_FILE, 0, &path) != FcResultMatch) return std::nullopt;
  FontFile file{reinterpret_cast<const char*>(path), 0};
  FcPatternGetInteger(match.get(), FC_INDEX, 0, &file.index);
  return file;
}

double openTypeWeight(FontWeight weight) { return weight == FontWeight::medium ? 500 : 400; }

}  // namespace kelvane
