// For tests: reads a PNG file with 8 bits a channel.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include <png.h>

#include "platform/linux/drawing/bitmap.h"
#include "platform/linux/drawing/pixels.h"

namespace kelvane {

// Absent when there is no such picture.
inline std::optional<Bitmap> readPng(const std::string& path) {
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_file(&image, path.c_str())) return std::nullopt;
  image.format = PNG_FORMAT_BGRA;  // 0xAARRGGBB, the lowest byte first
  Bitmap bitmap{static_cast<int>(image.width), static_cast<int>(image.height), {}};
  bitmap.pixels.resize(std::size_t{image.width} * image.height);
  if (!png_image_finish_read(&image, nullptr, bitmap.pixels.data(), 0, nullptr))
    return std::nullopt;
  for (std::uint32_t& pixel : bitmap.pixels)
    pixel = (faded(pixel, pixel >> 24) & 0xFFFFFF) | (pixel & 0xFF000000);
  return bitmap;
}

}  // namespace kelvane
