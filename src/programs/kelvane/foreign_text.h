// Texts that other programs show with their own fonts. Main thread.
#pragma once

#include <string>

#include "platform/linux/drawing/font_faces.h"

namespace kelvane {

// The text with "%" in place of the small percent sign, when no font of the system has that.
std::string replaceUncoveredCharacters(FontFaces& fonts, std::string text);

}  // namespace kelvane
