// Text with its looks. Plain values, any thread. Texts are UTF-8.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/color.h"

namespace kelvane {

enum class FontWeight { regular, medium };

// The looks of a text in a drawing; always the system font.
struct TextStyle {
  double size = 0;  // points; at 0 or below a text measures 0 and draws nothing
  FontWeight weight = FontWeight::regular;
  double kern = 0;             // points added after every character
  std::optional<Color> color;  // absent: black, or the foreground of a template image
};

// A stretch of an attributed text with one look.
struct TextRun {
  std::string text;
  std::optional<double> fontSize;  // points, system font; absent: the platform's own default font
  FontWeight weight = FontWeight::regular;
  std::optional<Color> color;  // absent: the foreground of whoever shows the text
  bool operator==(const TextRun&) const = default;
};

struct AttributedText {
  std::vector<TextRun> runs;

  std::string plainText() const {
    std::string text;
    for (const TextRun& run : runs) text += run.text;
    return text;
  }
  bool operator==(const AttributedText&) const = default;
};

}  // namespace kelvane
