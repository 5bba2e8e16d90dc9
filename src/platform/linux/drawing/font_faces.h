// The font faces that the item's texts are drawn with: one face for each weight, found once with
// fontconfig and kept open, and further faces only for characters it lacks.
//
// Main thread; owns the FreeType library and its faces. Nothing is matched before the first glyph
// is asked for. Between matches no fontconfig memory stays: its cache maps and tables are given
// back as soon as a font file is known, and the file itself is mapped, not read.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/geometry.h"
#include "platform/text.h"

using FT_Face = struct FT_FaceRec_*;
using FT_Library = struct FT_LibraryRec_*;
using FT_Outline = struct FT_Outline_;

namespace kelvane {

// A glyph of a face, to be drawn at `scale` times the text's size. Face and outline belong to
// `FontFaces` and live until its family changes.
struct FaceGlyph {
  FT_Face face = nullptr;
  unsigned index = 0;
  double scale = 1;
  double bearing = 0;  // room after the glyph, as a part of the text's size
  // Loaded and measured once, in the font's own units: shrinking to fit asks again and again, and
  // every redraw draws the same ten digits.
  const FT_Outline* outline = nullptr;  // unhinted; null when the font has none for it
  double advance = 0;
  Rect ink;  // empty without any
};

class FontFaces {
 public:
  // While one lives, all questions to fontconfig together cost as much as one: what it has loaded
  // is given back at the end.
  class [[nodiscard]] Questions {
   public:
    explicit Questions(FontFaces& faces);
    ~Questions();
    Questions(const Questions&) = delete;
    Questions& operator=(const Questions&) = delete;

   private:
    FontFaces& faces_;
  };

  // `family` as fontconfig knows it; several may be separated by commas. Empty: the system's sans.
  explicit FontFaces(std::string family = {});
  ~FontFaces();
  FontFaces(const FontFaces&) = delete;
  FontFaces& operator=(const FontFaces&) = delete;

  // Takes another family from the next glyph on. All glyphs given before are void, unless the
  // family is the one in use (then nothing happens).
  void setFamily(std::string family);

  // The glyphs to draw for one character, in order; none for a character that takes no room
  // (variation selectors, controls). A character that no font has is replaced (see `standInFor`);
  // empty too when there is no font at all. The reference is valid until the next call.
  const std::vector<FaceGlyph>& glyphs(char32_t character, FontWeight weight);

  // The text face of a weight; null when there is no outline font on the system.
  FT_Face textFace(FontWeight weight);

  // What fills their outlines; null when FreeType could not start.
  FT_Library library() const;

  // Whether any outline font of the system has the character; asks fontconfig at most once for each
  // character and family.
  bool covers(char32_t character);

  // The file of the text face, for diagnostics; empty when there is none.
  std::string textFaceFile(FontWeight weight);

 private:
  struct State;
  std::unique_ptr<State> state_;
};

// What is drawn when no font has `character`: other characters at `scale` times the size, or
// absent.
struct StandIn {
  char32_t character = 0;
  std::u32string_view text;
  double scale = 1;
  double bearing = 0;            // room after it, as a part of the text's size
  bool prefersTextFace = false;  // used as soon as the text face lacks the character
};
std::optional<StandIn> standInFor(char32_t character);

}  // namespace kelvane
