// A preferences file, as anybody may have written it.
#include <string>

#include "platform/linux/preferences/plist_limits.h"
#include "platform/linux/preferences/plist_text.h"
#include "tests/fuzz/fuzzing.h"

using namespace kelvane;

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const ParsedPlist parsed = parsePlist(bytesOf(data, size));
  require(!parsed.dictionary == !parsed.problem.empty(), "a dictionary or a problem, not both");
  require(parsed.problem.find('\n') == std::string::npos, "a problem is said on one line");
  if (!parsed.dictionary) return 0;

  const PropertyDictionary values = valuesOf(parsed.dictionary.get());
  const PlistNode written = toPlist(PropertyValue(values));
  const std::string text = plistXml(written.get());
  if (text.size() > kMaximumPlistBytes) return 0;
  const ParsedPlist again = parsePlist(text);
  require(again.dictionary != nullptr, "what we write can be read");
  require(plistXml(toPlist(PropertyValue(valuesOf(again.dictionary.get()))).get()) == text,
          "what was read is written as it was");
  return 0;
}
