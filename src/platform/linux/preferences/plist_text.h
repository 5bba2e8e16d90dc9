// Property lists as bytes: both forms are read, XML is written. Any thread.
#pragma once

#include <string>
#include <string_view>

#include "platform/linux/preferences/plist_conversion.h"

namespace kelvane {

struct ParsedPlist {
  PlistNode dictionary;  // null when there is a problem
  std::string problem;   // why the bytes are no dictionary that may be read, in words
};

ParsedPlist parsePlist(std::string_view bytes);

// Real numbers come back bit by bit (but for the sign of a zero), whatever the locale is.
std::string plistXml(plist_t node);

}  // namespace kelvane
