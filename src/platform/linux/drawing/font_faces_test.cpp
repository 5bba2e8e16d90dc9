#include "platform/linux/drawing/font_faces.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/drawing/bitmap.h"
#include "platform/linux/drawing/font_match.h"
#include "platform/linux/drawing/pinned_fonts.h"

namespace kelvane {
namespace {

using ::testing::EndsWith;

constexpr char32_t kAlef = U'\u05D0';         // in DejaVu Sans, not in its monospaced sister
constexpr char32_t kIdeograph = U'\u6F22';    // in neither
constexpr char32_t kHighVoltage = U'\u26A1';  // in DejaVu Sans

Bitmap drawn(FontFaces& faces, const std::string& text) {
  TextStyle style;
  style.size = 10;
  style.weight = FontWeight::medium;
  const Image image{{60, 14}, true, [&](Canvas& canvas, const Rect& rect) {
                      canvas.drawText(text, {0, 3, rect.width, 8}, style);
                    }};
  return renderImage(faces, image, 2, Color{1, 1, 1, 1});
}

TEST(FontFaces, fontconfigIsAskedOnceForAFace) {
  const PinnedFonts fonts({"DejaVu Sans"});
  const FontconfigCalls before = fontconfigCalls();
  FontFaces faces;
  faces.setFamily("DejaVu Sans");
  EXPECT_EQ(fontconfigCalls(), before);

  const Bitmap first = drawn(faces, "57\uFE6A \u26A1\uFE0E");
  EXPECT_EQ(fontconfigCalls().matches, before.matches + 1);
  const FontconfigCalls after = fontconfigCalls();
  EXPECT_EQ(after.starts - before.starts, after.ends - before.ends);

  EXPECT_EQ(drawn(faces, "57\uFE6A \u26A1\uFE0E"), first);
  drawn(faces, "100\uFE6A \u221E \u2026");
  faces.setFamily("DejaVu Sans");
  drawn(faces, "99");
  EXPECT_EQ(fontconfigCalls(), after);
}

TEST(FontFaces, questionsTogetherLoadFontconfigOnce) {
  const PinnedFonts fonts({"DejaVu Sans"});
  FontFaces faces;
  const FontconfigCalls before = fontconfigCalls();
  {
    const FontFaces::Questions together(faces);
    EXPECT_EQ(fontconfigCalls(), before);
    drawn(faces, "57");
    faces.covers(kIdeograph);
    EXPECT_EQ(fontconfigCalls(),
              (FontconfigCalls{before.starts + 1, before.ends, before.matches + 2}));
  }
  EXPECT_EQ(fontconfigCalls().ends, before.ends + 1);
}

TEST(FontFaces, aMissingCharacterIsAskedForOnce) {
  const PinnedFonts fonts({"DejaVu Sans"});
  FontFaces faces;
  const auto missing = faces.glyphs(kIdeograph, FontWeight::medium);
  ASSERT_EQ(missing.size(), 1U);
  EXPECT_EQ(missing[0].index, faces.glyphs(U'?', FontWeight::medium)[0].index);
  const FontconfigCalls after = fontconfigCalls();
  faces.glyphs(kIdeograph, FontWeight::medium);
  EXPECT_EQ(fontconfigCalls(), after);
}

TEST(FontFaces, anotherFaceServesOnlyTheMissingCharacter) {
  const PinnedFonts fonts({"DejaVu Sans", "DejaVu Sans Mono"});
  FontFaces faces("DejaVu Sans Mono");
  EXPECT_THAT(faces.textFaceFile(FontWeight::medium), EndsWith("DejaVuSansMono.ttf"));
  const auto digit = faces.glyphs(U'5', FontWeight::medium);
  const auto alef = faces.glyphs(kAlef, FontWeight::medium);
  ASSERT_EQ(digit.size(), 1U);
  ASSERT_EQ(alef.size(), 1U);
  EXPECT_EQ(digit[0].face, faces.textFace(FontWeight::medium));
  EXPECT_NE(alef[0].face, digit[0].face);
}

TEST(FontFaces, theFamilyCanChangeLater) {
  const PinnedFonts fonts({"DejaVu Sans", "DejaVu Sans Mono"});
  FontFaces faces("DejaVu Sans");
  const Bitmap first = drawn(faces, "ill");
  faces.setFamily("No Such Family,DejaVu Sans Mono");
  EXPECT_NE(drawn(faces, "ill"), first);
  EXPECT_THAT(faces.textFaceFile(FontWeight::medium), EndsWith("DejaVuSansMono.ttf"));
  faces.setFamily("DejaVu Sans");
  EXPECT_EQ(drawn(faces, "ill"), first);
}

TEST(FontFaces, charactersThatTakeNoRoomOrHaveNoGlyph) {
  const PinnedFonts fonts({"DejaVu Sans"});
  FontFaces faces;
  for (const char32_t c : {U'\uFE0E', U'\uFE0F', U'\u200D', U'\uFEFF', U'\n', U'\0'}) {
    EXPECT_TRUE(faces.glyphs(c, FontWeight::regular).empty()) << static_cast<unsigned>(c);
  }
  const auto sign = faces.glyphs(U'\uFE6A', FontWeight::regular);
  ASSERT_EQ(sign.size(), 1U);
  EXPECT_EQ(sign[0].index, faces.glyphs(U'%', FontWeight::regular)[0].index);
  EXPECT_DOUBLE_EQ(sign[0].scale, 0.78);
  EXPECT_EQ(faces.glyphs(kHighVoltage, FontWeight::regular)[0].scale, 1);
}

TEST(FontFaces, everyStandInEndsInCharactersOfAnyFont) {
  for (char32_t c = 0x80; c < 0x10000; ++c) {
    auto standIn = standInFor(c);
    for (int steps = 0; standIn && standIn->text[0] >= 0x80; ++steps) {
      ASSERT_LT(steps, 5) << static_cast<unsigned>(c);
      standIn = standInFor(standIn->text[0]);
      ASSERT_TRUE(standIn) << static_cast<unsigned>(c);
    }
  }
}

TEST(FontFaces, coverageIsThatOfAllFonts) {
  const PinnedFonts fonts({"DejaVu Sans", "DejaVu Sans Mono"});
  FontFaces faces("DejaVu Sans Mono");
  EXPECT_TRUE(faces.covers(U'%'));
  EXPECT_TRUE(faces.covers(kAlef));
  EXPECT_FALSE(faces.covers(U'\uFE6A'));
  const FontconfigCalls after = fontconfigCalls();
  EXPECT_FALSE(faces.covers(U'\uFE6A'));
  EXPECT_EQ(fontconfigCalls(), after);
}

TEST(FontFaces, withoutAnyFontNothingIsDrawn) {
  const PinnedFonts fonts({});
  FontFaces faces;
  EXPECT_EQ(faces.textFace(FontWeight::medium), nullptr);
  EXPECT_EQ(faces.textFaceFile(FontWeight::medium), "");
  EXPECT_TRUE(faces.glyphs(U'5', FontWeight::medium).empty());
  EXPECT_FALSE(faces.covers(U'5'));
  EXPECT_EQ(drawn(faces, "57"), drawn(faces, ""));
}

}  // namespace
}  // namespace kelvane
