// Texts, kept as UTF-8.
#include <string>
#include <vector>

#import <AppKit/AppKit.h>

#include "app_kit/recorded.h"
#include "runtime/abi.h"

namespace {

bool isUtf8(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    const auto head = static_cast<unsigned char>(text[i]);
    const std::size_t length = head < 0x80   ? 1
                               : head < 0xC2 ? 0
                               : head < 0xE0 ? 2
                               : head < 0xF0 ? 3
                               : head < 0xF5 ? 4
                                             : 0;
    if (length == 0 || i + length > text.size()) return false;
    for (std::size_t k = 1; k < length; ++k)
      if ((static_cast<unsigned char>(text[i + k]) & 0xC0) != 0x80) return false;
    i += length;
  }
  return true;
}

// Of units without surrogates, which no constant of ours has.
std::string narrow(const char16_t* units, std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    const char32_t unit = units[i];
    if (unit < 0x80) {
      text += static_cast<char>(unit);
    } else if (unit < 0x800) {
      text += {static_cast<char>(0xC0 | unit >> 6), static_cast<char>(0x80 | (unit & 0x3F))};
    } else {
      text += {static_cast<char>(0xE0 | unit >> 12), static_cast<char>(0x80 | (unit >> 6 & 0x3F)),
               static_cast<char>(0x80 | (unit & 0x3F))};
    }
  }
  return text;
}

}  // namespace

@interface NSString (KelvaneText)
- (const std::string&)kelvaneText;
@end

@implementation NSString {
  std::string text_;
}

- (const std::string&)kelvaneText {
  return text_;
}
+ (instancetype)string {
  return [[self alloc] initWithBytes:"" length:0 encoding:NSUTF8StringEncoding];
}
+ (instancetype)stringWithUTF8String:(const char*)bytes {
  return [[self alloc] initWithBytes:bytes
                              length:std::string_view(bytes).size()
                            encoding:NSUTF8StringEncoding];
}
- (instancetype)initWithBytes:(const void*)bytes
                       length:(NSUInteger)length
                     encoding:(NSStringEncoding)encoding {
  const std::string text(static_cast<const char*>(bytes), length);
  if (encoding != NSUTF8StringEncoding || !isUtf8(text)) return nil;
  if ((self = [super init])) text_ = text;
  return self;
}
- (const char*)UTF8String {
  return self.kelvaneText.c_str();
}
- (NSUInteger)lengthOfBytesUsingEncoding:(NSStringEncoding)encoding {
  return encoding == NSUTF8StringEncoding ? self.kelvaneText.size() : 0;
}
- (NSUInteger)length {
  NSUInteger units = 0;
  for (const char each : self.kelvaneText) {
    const auto byte = static_cast<unsigned char>(each);
    units += (byte & 0xC0) == 0x80 ? 0 : byte < 0xF0 ? 1 : 2;
  }
  return units;
}
- (BOOL)isEqualToString:(NSString*)string {
  return string && self.kelvaneText == string.kelvaneText;
}
- (BOOL)isEqual:(id)object {
  return [object isKindOfClass:NSString.class] && [self isEqualToString:object];
}
- (BOOL)hasPrefix:(NSString*)prefix {
  return self.kelvaneText.starts_with(prefix.kelvaneText);
}
- (NSString*)stringByAppendingString:(NSString*)string {
  return [NSString stringWithUTF8String:(self.kelvaneText + string.kelvaneText).c_str()];
}
- (id)copyWithZone:(NSZone*)zone {
  (void)zone;
  return self;
}
@end

// What the compiler makes of a literal.
@interface KelvaneConstantString : NSString
@end

@implementation KelvaneConstantString
- (const std::string&)kelvaneText {
  static auto* const texts = new std::unordered_map<const void*, std::string>;
  const auto* literal =
      reinterpret_cast<const kelvane::objc::ConstantString*>((__bridge void*)self);
  auto [found, isNew] = texts->try_emplace(literal);
  if (isNew)
    found->second = literal->flags & kelvane::objc::kWideFlag
                        ? narrow(static_cast<const char16_t*>(literal->bytes), literal->length)
                        : std::string(static_cast<const char*>(literal->bytes), literal->length);
  return found->second;
}
@end

asm(".globl __CFConstantStringClassReference\n"
    ".set __CFConstantStringClassReference, OBJC_CLASS_$_KelvaneConstantString");

// Runs of the whole text with their looks.
@implementation NSAttributedString {
 @protected
  NSMutableArray<NSDictionary*>* runs_;
}
- (instancetype)initWithString:(NSString*)string {
  return [self initWithString:string attributes:nil];
}
- (instancetype)initWithString:(NSString*)string
                    attributes:(NSDictionary<NSAttributedStringKey, id>*)attributes {
  if ((self = [super init])) {
    runs_ = [NSMutableArray arrayWithCapacity:1];
    if (string.length)
      [runs_ addObject:@{
        @"text" : string,
        @"looks" : attributes ? attributes : [NSDictionary dictionary]
      }];
  }
  return self;
}
- (NSArray<NSDictionary*>*)kelvaneRuns {
  return runs_;
}
- (NSString*)string {
  NSString* whole = @"";
  for (NSDictionary* run in runs_) whole = [whole stringByAppendingString:run[@"text"]];
  return whole;
}
- (id)copyWithZone:(NSZone*)zone {
  (void)zone;
  NSAttributedString* copy = [[NSAttributedString alloc] initWithString:@""];
  for (NSDictionary* run in runs_) [copy->runs_ addObject:run];
  return copy;
}
@end

@implementation NSMutableAttributedString
- (void)appendAttributedString:(NSAttributedString*)string {
  for (NSDictionary* run in string->runs_) [runs_ addObject:run];
}
@end
