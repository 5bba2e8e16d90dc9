#include "platform/linux/preferences/plist_limits.h"

#include <cstdint>
#include <utility>

namespace kelvane {
namespace {

constexpr const char* kTooDeep = "nested too deeply";
constexpr std::string_view kBinaryMagic = "bplist00";

// Where scanning goes on after the markup at the beginning of `rest`, in which no element counts.
std::optional<std::size_t> endOfMarkup(std::string_view rest) {
  constexpr std::pair<std::string_view, std::string_view> kinds[] = {
      {"<!--", "-->"}, {"<![CDATA[", "]]>"}, {"<?", "?>"}, {"<!", ">"}};
  for (const auto& [begin, end] : kinds) {
    if (!rest.starts_with(begin)) continue;
    const auto found = rest.find(end, begin.size());
    return found == rest.npos ? rest.size() : found + end.size();
  }
  return std::nullopt;
}

std::optional<std::string> xmlRefusal(std::string_view text) {
  int depth = 0;
  for (auto at = text.find('<'); at != text.npos; at = text.find('<', at)) {
    const auto rest = text.substr(at);
    if (const auto end = endOfMarkup(rest)) {
      at += *end;
      continue;
    }
    const bool isEnd = rest.starts_with("</");
    const std::size_t begin = isEnd ? 2 : 1;
    const auto name = rest.substr(begin, rest.find_first_of(" \t\r\n/>", begin) - begin);
    if (name == "dict" || name == "array") {
      if (!isEnd && ++depth > kMaximumPlistNesting) return kTooDeep;
      const auto close = rest.find('>');
      const bool isEmpty = close != rest.npos && rest[close - 1] == '/';
      if ((isEnd || isEmpty) && depth > 0) --depth;
    }
    ++at;
  }
  return std::nullopt;
}

// Walks the containers of a binary list as its parser will. Never reads outside of the bytes.
class BinaryWalk {
 public:
  explicit BinaryWalk(std::string_view bytes) : bytes_(bytes) {}

  std::optional<std::string> refusal() {
    constexpr std::size_t kTrailer = 32;
    if (bytes_.size() < kBinaryMagic.size() + kTrailer) return kDamaged;
    const std::size_t trailer = bytes_.size() - kTrailer;
    offsetSize_ = *number(trailer + 6, 1);
    referenceSize_ = *number(trailer + 7, 1);
    objectCount_ = *number(trailer + 8, 8);
    offsetTable_ = *number(trailer + 24, 8);
    return visit(*number(trailer + 16, 8), 0);
  }

 private:
  static constexpr const char* kDamaged = "damaged";

  // Big-endian; absent outside of the bytes.
  std::optional<std::uint64_t> number(std::uint64_t at, std::uint64_t size) const {
    if (size == 0 || size > 8 || at > bytes_.size() || size > bytes_.size() - at)
      return std::nullopt;
    std::uint64_t value = 0;
    for (const char byte : bytes_.substr(at, size))
      value = value << 8 | static_cast<unsigned char>(byte);
    return value;
  }

  struct Object {
    unsigned kind = 0;        // the marker's upper half
    std::uint64_t first = 0;  // where its contents begin
    std::uint64_t count = 0;  // elements, or characters
  };

  std::optional<Object> object(std::uint64_t index) const {
    // Both factors are bounded first, so the product can't wrap round.
    if (index >= objectCount_ || index > bytes_.size()) return std::nullopt;
    const auto entry = number(offsetTable_ + index * offsetSize_, offsetSize_);
    const auto marker = entry ? number(*entry, 1) : std::nullopt;
    if (!marker) return std::nullopt;
    Object found{static_cast<unsigned>(*marker >> 4), *entry + 1, *marker & 0xF};
    if (found.count != 0xF || found.kind < kFirstCounted) return found;
    // The count follows as a number of its own.
    const auto countMarker = number(found.first, 1);
    if (!countMarker || *countMarker >> 4 != 0x1) return std::nullopt;
    const std::uint64_t size = std::uint64_t{1} << (*countMarker & 0xF);
    const auto longCount = number(found.first + 1, size);
    if (!longCount || *longCount > bytes_.size()) return std::nullopt;
    return Object{found.kind, found.first + 1 + size, *longCount};
  }

  std::optional<std::string> visit(std::uint64_t index, int depth) {
    if (++values_ > kMaximumPlistValues) return "of too many values";
    const auto found = object(index);
    if (!found) return kDamaged;
    const bool isDictionary = found->kind == kDictionary;
    if (!isDictionary && found->kind != kArray) return std::nullopt;
    if (depth >= kMaximumPlistNesting) return kTooDeep;
    const std::uint64_t keys = isDictionary ? found->count : 0;
    for (std::uint64_t i = 0; i < keys + found->count; ++i) {
      const auto child = number(found->first + i * referenceSize_, referenceSize_);
      if (!child || (i < keys && !isKey(*child))) return kDamaged;
      if (auto refused = visit(*child, depth + 1)) return refused;
    }
    return std::nullopt;
  }

  // A key is a text, and libplist ends the process over one with a zero in it.
  bool isKey(std::uint64_t index) const {
    const auto key = object(index);
    if (!key || (key->kind != kAscii && key->kind != kUtf16)) return false;
    const std::uint64_t unit = key->kind == kAscii ? 1 : 2;
    for (std::uint64_t i = 0; i < key->count; ++i)
      if (number(key->first + i * unit, unit).value_or(0) == 0) return false;
    return true;
  }

  static constexpr unsigned kFirstCounted = 0x4;  // kinds below it have no count
  static constexpr unsigned kAscii = 0x5;
  static constexpr unsigned kUtf16 = 0x6;
  static constexpr unsigned kArray = 0xA;
  static constexpr unsigned kDictionary = 0xD;

  std::string_view bytes_;
  std::uint64_t offsetSize_ = 0;
  std::uint64_t referenceSize_ = 0;
  std::uint64_t objectCount_ = 0;
  std::uint64_t offsetTable_ = 0;
  int values_ = 0;
};

}  // namespace

bool isBinaryPlist(std::string_view bytes) { return bytes.starts_with(kBinaryMagic); }

std::optional<std::string> plistRefusal(std::string_view bytes) {
  if (bytes.size() > kMaximumPlistBytes) return "larger than 256 KiB";
  return isBinaryPlist(bytes) ? BinaryWalk(bytes).refusal() : xmlRefusal(bytes);
}

}  // namespace kelvane
