// What the fuzz targets share. Each target is one function that gets bytes from nobody knows where;
// besides crashes, leaks and undefined behaviour it looks for broken promises of the code it calls.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace kelvane {

// Ends the process, which counts as a crash, when a promise is broken.
inline void require(bool isKept, const char* promise) {
  if (isKept) return;
  std::fprintf(stderr, "broken promise: %s\n", promise);
  std::abort();
}

inline std::string_view bytesOf(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

}  // namespace kelvane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
