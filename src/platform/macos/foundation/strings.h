// Texts between the house (UTF-8) and Foundation. Any thread.
#pragma once

#include <string>
#include <string_view>

#import <Foundation/Foundation.h>

namespace kelvane {

// Empty for bytes that are no UTF-8.
inline NSString* nsString(std::string_view text) {
  NSString* string = [[NSString alloc] initWithBytes:text.data()
                                              length:text.size()
                                            encoding:NSUTF8StringEncoding];
  return string ? string : @"";
}

inline std::string utf8(NSString* string) {
  const char* bytes = string.UTF8String;
  return bytes ? bytes : "";
}

}  // namespace kelvane
