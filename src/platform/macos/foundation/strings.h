// Texts between the house (UTF-8) and Foundation. Pure functions, any thread.
#pragma once

#include <string>
#include <string_view>

#import <Foundation/Foundation.h>

namespace kelvane {

// Empty for nil.
inline std::string textOf(NSString* _Nullable string) {
  const char* bytes = string.UTF8String;
  // A text may contain NUL.
  return bytes ? std::string(bytes, [string lengthOfBytesUsingEncoding:NSUTF8StringEncoding])
               : std::string();
}

// nil when the text is no UTF-8.
inline NSString* _Nullable stringOf(std::string_view text) {
  return [[NSString alloc] initWithBytes:text.data()
                                  length:text.size()
                                encoding:NSUTF8StringEncoding];
}

// What is shown: empty when the text is no UTF-8.
inline NSString* _Nonnull nsString(std::string_view text) {
  NSString* string = stringOf(text);
  return string ? string : @"";
}

}  // namespace kelvane
