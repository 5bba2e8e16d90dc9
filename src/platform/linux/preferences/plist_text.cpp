#include "platform/linux/preferences/plist_text.h"

#include <cstdint>

#include <locale.h>

#include "platform/linux/preferences/plist_limits.h"

namespace kelvane {
namespace {

// libplist reads and writes reals as the C library does, so in some countries with a comma.
class DecimalPoint {
 public:
  DecimalPoint() : before_(uselocale(cLocale())) {}
  ~DecimalPoint() { uselocale(before_); }
  DecimalPoint(const DecimalPoint&) = delete;
  DecimalPoint& operator=(const DecimalPoint&) = delete;

 private:
  static locale_t cLocale() {
    static const locale_t locale = newlocale(LC_ALL_MASK, "C", nullptr);
    return locale;
  }
  locale_t before_;
};

}  // namespace

ParsedPlist parsePlist(std::string_view bytes) {
  if (auto refused = plistRefusal(bytes)) return {nullptr, *std::move(refused)};
  const DecimalPoint decimalPoint;
  plist_t node = nullptr;
  const auto size = static_cast<std::uint32_t>(bytes.size());
  if (isBinaryPlist(bytes)) {
    plist_from_bin(bytes.data(), size, &node);
  } else {
    plist_from_xml(bytes.data(), size, &node);
  }
  PlistNode owner(node);
  if (!owner) return {nullptr, "not a property list"};
  if (plist_get_node_type(node) != PLIST_DICT) return {nullptr, "not a dictionary"};
  return {std::move(owner), {}};
}

std::string plistXml(plist_t node) {
  const DecimalPoint decimalPoint;
  char* text = nullptr;
  std::uint32_t size = 0;
  plist_to_xml(node, &text, &size);
  std::string xml(text ? text : "", text ? size : 0);
  plist_to_xml_free(text);
  return xml;
}

}  // namespace kelvane
