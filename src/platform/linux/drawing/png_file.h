// Pictures as files for people. Any thread.
#pragma once

#include <optional>
#include <string>

#include "platform/linux/drawing/bitmap.h"

namespace kelvane {

// Writes a PNG file. Absent on success, else why not, in words that name the file.
std::optional<std::string> writePng(const Bitmap& bitmap, const std::string& path);

}  // namespace kelvane
