// What generated intents inherit: objects whose dynamic properties the system makes.
#include <cctype>
#include <string>

#import <Intents/Intents.h>

#include "doubles.h"
#include "runtime/abi.h"

@interface INObject () {
 @public
  NSMutableDictionary* values_;
}
@property(nullable, readwrite) NSString* identifier;
@property(readwrite) NSString* displayString;
@property(nullable, readwrite) NSString* pronunciationHint;
@end

@interface INIntentResponse () {
 @public
  NSMutableDictionary* values_;
}
@end

namespace {

using namespace kelvane::objc;

NSMutableDictionary* valuesOf(id object) {
  NSMutableDictionary* __strong& values = [object isKindOfClass:INObject.class]
                                              ? ((INObject*)object)->values_
                                              : ((INIntentResponse*)object)->values_;
  if (!values) values = [NSMutableDictionary dictionary];
  return values;
}

// "name" of "name" and of "setName:".
std::string propertyName(Selector selector) {
  std::string name = selector;
  if (!name.ends_with(":")) return name;
  name = name.substr(3, name.size() - 4);
  name[0] = static_cast<char>(std::tolower(name[0]));
  return name;
}
NSString* keyOf(Selector selector) {
  return [NSString stringWithUTF8String:propertyName(selector).c_str()];
}

id getObject(id self, Selector selector) { return valuesOf(self)[keyOf(selector)]; }
void setObject(id self, Selector selector, id value) {
  valuesOf(self)[keyOf(selector)] = [value copy];
}
NSInteger getWhole(id self, Selector selector) {
  return [valuesOf(self)[keyOf(selector)] integerValue];
}
void setWhole(id self, Selector selector, NSInteger value) {
  valuesOf(self)[keyOf(selector)] = @(value);
}

Implementation accessor(kelvane::objc::Class* of, Selector selector) {
  const bool isSetter = std::string(selector).ends_with(":");
  for (; of; of = of->superclass) {
    const PropertyList* list = of->data->properties;
    for (std::uint32_t i = 0; list && i < list->count; ++i) {
      if (propertyName(selector) != list->first[i].name) continue;
      const std::string attributes = list->first[i].attributes;
      if (attributes.find(",D") == std::string::npos) return nullptr;
      if (attributes.starts_with("T@"))
        return isSetter ? reinterpret_cast<Implementation>(setObject)
                        : reinterpret_cast<Implementation>(getObject);
      return isSetter ? reinterpret_cast<Implementation>(setWhole)
                      : reinterpret_cast<Implementation>(getWhole);
    }
  }
  return nullptr;
}
[[maybe_unused]] const bool kResolves = (resolveMissing = accessor, true);

}  // namespace

@implementation INIntent
@end

@implementation INIntentResponse
@end

@implementation INObject
- (instancetype)initWithIdentifier:(NSString*)identifier
                     displayString:(NSString*)displayString
                 pronunciationHint:(NSString*)pronunciationHint {
  if ((self = [super init])) {
    self.identifier = identifier;
    self.displayString = displayString;
    self.pronunciationHint = pronunciationHint;
  }
  return self;
}
- (id)copyWithZone:(NSZone*)zone {
  (void)zone;
  return self;
}
@end

@implementation INIntentResolutionResult
@end

@implementation INEnumResolutionResult
@end

@implementation INObjectResolutionResult
@end
