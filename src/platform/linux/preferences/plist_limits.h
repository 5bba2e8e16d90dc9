// A look at the bytes of a property list before they are given to libplist, which trusts their
// nesting with its stack and their cross references with the memory. Pure, any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kelvane {

inline constexpr std::size_t kMaximumPlistBytes = 256 * 1024;
// Dictionaries and arrays within each other, the outermost included.
inline constexpr int kMaximumPlistNesting = 32;
// Binary lists may name one value many times; each mention counts.
inline constexpr int kMaximumPlistValues = 100'000;

bool isBinaryPlist(std::string_view bytes);

// Why the bytes must not be parsed, in words; absent when they may. It finds no other fault: what
// is damaged in another way is for the parser.
std::optional<std::string> plistRefusal(std::string_view bytes);

}  // namespace kelvane
