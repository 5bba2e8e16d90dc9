#include "platform/linux/drawing/font_faces.h"

#include <algorithm>
#include <array>
#include <deque>
#include <map>
#include <utility>

#include <freetype/freetype.h>
#include <freetype/ftbbox.h>
#include <freetype/ftmm.h>
#include <freetype/ftoutln.h>
#include <ft2build.h>

#include "platform/linux/drawing/font_match.h"

namespace kelvane {
namespace {

constexpr char32_t kUnknownCharacter = U'?';

// Small things first; the sign's own size is that of small percent signs in fonts that have one.
constexpr std::array kStandIns = {
    // The small percent sign stands in the left of a wider box.
    StandIn{U'\uFE6A', U"%", 0.78, 0.2, true},
    StandIn{U'\u26A1', U"\u21AF", 1},  // high voltage sign: the zigzag arrow
    StandIn{U'\u21AF', U"+", 1},       // zigzag arrow
    StandIn{U'\u221E', U"oo", 0.8},    // infinity
    StandIn{U'\u2026', U"...", 1},     // ellipsis
    StandIn{U'\u2212', U"-", 1},       // minus sign
    StandIn{U'\u2013', U"-", 1},       // en dash
    StandIn{U'\u00A0', U" ", 1},       // no-break space
    StandIn{U'\u202F', U" ", 0.7},     // narrow no-break space
};

bool takesNoRoom(char32_t c) {
  return c < 0x20 || (c >= 0x7F && c < 0xA0) || c == 0xAD ||  // controls, soft hyphen
         (c >= 0x200B && c <= 0x200F) || (c >= 0x202A && c <= 0x202E) ||
         (c >= 0x2060 && c <= 0x2064) || c == 0xFEFF ||                   // joiners, directions
         (c >= 0xFE00 && c <= 0xFE0F) || (c >= 0xE0100 && c <= 0xE01EF);  // variation selectors
}

struct OpenFace {
  FontFile file;
  FT_Face face = nullptr;
};

// Sets the weight axis of a variable font and leaves its other axes where the face has them.
void setWeightAxis(FT_Library library, FT_Face face, FontWeight weight) {
  if (!FT_HAS_MULTIPLE_MASTERS(face)) return;
  FT_MM_Var* axes = nullptr;
  if (FT_Get_MM_Var(face, &axes) != 0) return;
  std::vector<FT_Fixed> position(axes->num_axis);
  if (FT_Get_Var_Design_Coordinates(face, axes->num_axis, position.data()) == 0) {
    for (FT_UInt i = 0; i < axes->num_axis; ++i) {
      const FT_Var_Axis& axis = axes->axis[i];
      if (axis.tag != FT_MAKE_TAG('w', 'g', 'h', 't')) continue;
      position[i] = std::clamp(static_cast<FT_Fixed>(openTypeWeight(weight) * 65536), axis.minimum,
                               axis.maximum);
    }
    FT_Set_Var_Design_Coordinates(face, axes->num_axis, position.data());
  }
  FT_Done_MM_Var(library, axes);
}

}  // namespace

std::optional<StandIn> standInFor(char32_t character) {
  for (const StandIn& standIn : kStandIns) {
    if (standIn.character == character) return standIn;
  }
  return std::nullopt;
}

struct FontFaces::State {
  using Key = std::pair<char32_t, FontWeight>;

  std::string family;
  FT_Library library = nullptr;
  std::map<FontWeight, OpenFace> textFaces;
  std::map<FontWeight, std::vector<OpenFace>> furtherFaces;
  std::map<Key, std::vector<FaceGlyph>> glyphs;
  std::deque<FT_Outline> outlines;  // of the glyphs, which point at them
  std::map<char32_t, bool> coverage;
  FontMatcher matcher;
  int scopes = 0;  // of `Questions`

  explicit State(std::string name) : family(std::move(name)) { FT_Init_FreeType(&library); }
  ~State() {
    clear();
    if (library) FT_Done_FreeType(library);
  }
  State(const State&) = delete;
  State& operator=(const State&) = delete;

  void clear() {
    for (auto& [weight, open] : textFaces) close(open);
    for (auto& [weight, list] : furtherFaces) std::for_each(list.begin(), list.end(), close);
    textFaces.clear();
    furtherFaces.clear();
    glyphs.clear();
    for (FT_Outline& outline : outlines) FT_Outline_Done(library, &outline);
    outlines.clear();
    coverage.clear();
  }

  std::optional<FontFile> match(FontWeight weight, std::optional<char32_t> character) {
    auto file = matcher.match(family, weight, character);
    if (scopes == 0) matcher.release();
    return file;
  }

  static void close(OpenFace& open) {
    if (open.face) FT_Done_Face(open.face);
    open.face = nullptr;
  }

  OpenFace open(const std::optional<FontFile>& file, FontWeight weight) const {
    OpenFace result;
    if (!file || !library) return result;
    // 0x8000 stands for the variable font itself, which to FreeType is the face without instance.
    const int index = (file->index >> 16) == 0x8000 ? file->index & 0xFFFF : file->index;
    if (FT_New_Face(library, file->path.c_str(), index, &result.face) != 0) return {};
    if (!FT_IS_SCALABLE(result.face) || result.face->units_per_EM == 0) {
      close(result);
      return {};
    }
    result.file = *file;
    setWeightAxis(library, result.face, weight);
    return result;
  }

  FT_Face textFace(FontWeight weight) {
    const auto known = textFaces.find(weight);
    if (known != textFaces.end()) return known->second.face;
    return textFaces.emplace(weight, open(match(weight, std::nullopt), weight)).first->second.face;
  }

  FaceGlyph measured(FT_Face face, FT_UInt index) {
    FaceGlyph glyph{face, index};
    if (FT_Load_Glyph(face, index, FT_LOAD_NO_SCALE | FT_LOAD_NO_HINTING) != 0 ||
        face->glyph->format != FT_GLYPH_FORMAT_OUTLINE)
      return glyph;
    FT_Outline& loaded = face->glyph->outline;  // until the face loads another one
    FT_Outline kept{};
    if (FT_Outline_New(library, static_cast<FT_UInt>(loaded.n_points), loaded.n_contours, &kept))
      return glyph;
    FT_Outline_Copy(&loaded, &kept);
    glyph.outline = &outlines.emplace_back(kept);
    glyph.advance = static_cast<double>(face->glyph->advance.x);
    FT_BBox box{};
    if (kept.n_points == 0 || FT_Outline_Get_BBox(&kept, &box) != 0) return glyph;
    const auto units = [](FT_Pos position) { return static_cast<double>(position); };
    glyph.ink = {units(box.xMin), units(box.yMin), units(box.xMax - box.xMin),
                 units(box.yMax - box.yMin)};
    return glyph;
  }

  // The glyph in the faces that are open already.
  std::optional<FaceGlyph> openGlyph(char32_t c, FontWeight weight) {
    FT_Face text = textFace(weight);
    if (!text) return std::nullopt;
    if (const FT_UInt index = FT_Get_Char_Index(text, c)) return measured(text, index);
    for (const OpenFace& further : furtherFaces[weight]) {
      if (const FT_UInt index = FT_Get_Char_Index(further.face, c)) {
        return measured(further.face, index);
      }
    }
    return std::nullopt;
  }

  std::optional<FaceGlyph> anyGlyph(char32_t c, FontWeight weight) {
    if (const auto glyph = openGlyph(c, weight)) return glyph;
    if (!textFace(weight)) return std::nullopt;
    OpenFace further = open(match(weight, c), weight);
    if (!further.face) return std::nullopt;
    if (FT_Get_Char_Index(further.face, c) == 0) {
      close(further);
      return std::nullopt;
    }
    furtherFaces[weight].push_back(std::move(further));
    return openGlyph(c, weight);
  }

  std::vector<FaceGlyph> resolve(char32_t c, FontWeight weight) {
    if (takesNoRoom(c)) return {};
    const auto standIn = standInFor(c);
    if (standIn && standIn->prefersTextFace) {
      if (const auto glyph = openGlyph(c, weight)) return {*glyph};
      return replaced(*standIn, weight);
    }
    if (const auto glyph = anyGlyph(c, weight)) return {*glyph};
    if (standIn) return replaced(*standIn, weight);
    if (c == kUnknownCharacter) return {};
    return resolve(kUnknownCharacter, weight);
  }

  std::vector<FaceGlyph> replaced(const StandIn& standIn, FontWeight weight) {
    std::vector<FaceGlyph> result;
    for (const char32_t c : standIn.text) {
      for (FaceGlyph glyph : resolve(c, weight)) {
        glyph.scale *= standIn.scale;
        result.push_back(glyph);
      }
    }
    if (!result.empty()) result.back().bearing = standIn.bearing;
    return result;
  }
};

FontFaces::Questions::Questions(FontFaces& faces) : faces_(faces) { ++faces_.state_->scopes; }

FontFaces::Questions::~Questions() {
  if (--faces_.state_->scopes == 0) faces_.state_->matcher.release();
}

FontFaces::FontFaces(std::string family) : state_(std::make_unique<State>(std::move(family))) {}
FontFaces::~FontFaces() = default;

void FontFaces::setFamily(std::string family) {
  if (family == state_->family) return;
  state_->clear();
  state_->family = std::move(family);
}

const std::vector<FaceGlyph>& FontFaces::glyphs(char32_t character, FontWeight weight) {
  const State::Key key{character, weight};
  const auto known = state_->glyphs.find(key);
  if (known != state_->glyphs.end()) return known->second;
  return state_->glyphs.emplace(key, state_->resolve(character, weight)).first->second;
}

FT_Face FontFaces::textFace(FontWeight weight) { return state_->textFace(weight); }

FT_Library FontFaces::library() const { return state_->library; }

bool FontFaces::covers(char32_t character) {
  const auto known = state_->coverage.find(character);
  if (known != state_->coverage.end()) return known->second;
  const bool covered = state_->match(FontWeight::regular, character).has_value();
  return state_->coverage.emplace(character, covered).first->second;
}

std::string FontFaces::textFaceFile(FontWeight weight) {
  if (!textFace(weight)) return {};
  return state_->textFaces.at(weight).file.path;
}

}  // namespace kelvane
