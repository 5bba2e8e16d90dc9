#include "platform/linux/drawing/png_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <vector>

#include <png.h>

namespace kelvane {
namespace {

bool writeFile(const std::string& path, const std::vector<std::uint8_t>& bytes) {
  std::FILE* file = std::fopen(path.c_str(), "wbe");
  if (!file) return false;
  const bool isWritten = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
  return std::fclose(file) == 0 && isWritten;
}

}  // namespace

std::optional<std::string> writePng(const Bitmap& bitmap, const std::string& path) {
  const std::string failure = "cannot write " + path + ": ";
  if (bitmap.pixels.empty()) return failure + "the picture has no size";
  png_image image{};
  image.version = PNG_IMAGE_VERSION;
  image.width = static_cast<png_uint_32>(bitmap.width);
  image.height = static_cast<png_uint_32>(bitmap.height);
  image.format = PNG_FORMAT_ARGB;
  const auto pixels = straightBigEndianArgb(bitmap);
  std::vector<std::uint8_t> bytes(PNG_IMAGE_PNG_SIZE_MAX(image));
  png_alloc_size_t size = bytes.size();
  if (!png_image_write_to_memory(&image, bytes.data(), &size, 0, pixels.data(), 0, nullptr))
    return failure + image.message;
  bytes.resize(size);
  if (!writeFile(path, bytes)) return failure + std::strerror(errno);
  return std::nullopt;
}

}  // namespace kelvane
