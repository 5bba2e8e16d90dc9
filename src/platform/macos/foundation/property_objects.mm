#include "platform/macos/foundation/property_objects.h"

#include <chrono>
#include <cmath>
#include <cstddef>
#include <utility>
#include <variant>

#include "platform/macos/foundation/strings.h"

namespace kelvane {
namespace {

constexpr int kDeepestLevel = 32;
// Some 280,000 years: what 64 bits of microseconds hold, with room to round.
constexpr double kLatestSecond = 9.0e12;

std::optional<PropertyValue> valueOf(id object, int level);

std::optional<PropertyValue> stringValue(NSString* string) {
  if (!string.UTF8String) return std::nullopt;
  return PropertyValue(textOf(string));
}

PropertyValue numberValue(NSNumber* number) {
  const auto reference = (__bridge CFNumberRef)number;
  if (CFGetTypeID(reference) == CFBooleanGetTypeID()) return bool{number.boolValue != 0};
  if (CFNumberIsFloatType(reference)) return number.doubleValue;
  return std::int64_t{number.longLongValue};
}

std::optional<PropertyValue> dateValue(NSDate* date) {
  const double seconds = date.timeIntervalSince1970;
  if (!(std::abs(seconds) < kLatestSecond)) return std::nullopt;
  return PropertyValue(Date(std::chrono::microseconds(std::llround(seconds * 1e6))));
}

PropertyData dataValue(NSData* data) {
  const auto* bytes = static_cast<const std::byte*>(data.bytes);
  return bytes ? PropertyData(bytes, bytes + data.length) : PropertyData();
}

std::optional<PropertyValue> arrayValue(NSArray* array, int level) {
  PropertyArray values;
  values.reserve(array.count);
  for (id element in array) {
    auto value = valueOf(element, level + 1);
    if (!value) return std::nullopt;
    values.push_back(*std::move(value));
  }
  return PropertyValue(std::move(values));
}

PropertyDictionary dictionaryValue(NSDictionary* dictionary, int level) {
  PropertyDictionary values;
  for (id key in dictionary) {
    if (![key isKindOfClass:[NSString class]]) continue;
    auto value = valueOf(dictionary[key], level + 1);
    if (value) values.insert_or_assign(textOf(key), *std::move(value));
  }
  return values;
}

std::optional<PropertyValue> valueOf(id object, int level) {
  if (level > kDeepestLevel) return std::nullopt;
  if ([object isKindOfClass:[NSString class]]) return stringValue(object);
  if ([object isKindOfClass:[NSNumber class]]) return numberValue(object);
  if ([object isKindOfClass:[NSDate class]]) return dateValue(object);
  if ([object isKindOfClass:[NSData class]]) return PropertyValue(dataValue(object));
  if ([object isKindOfClass:[NSArray class]]) return arrayValue(object, level);
  if ([object isKindOfClass:[NSDictionary class]])
    return PropertyValue(dictionaryValue(object, level));
  return std::nullopt;
}

struct ObjectMaker {
  id operator()(bool value) const { return [NSNumber numberWithBool:value]; }
  id operator()(std::int64_t value) const { return [NSNumber numberWithLongLong:value]; }
  id operator()(double value) const { return [NSNumber numberWithDouble:value]; }
  id operator()(const std::string& value) const { return stringOf(value); }
  id operator()(Date value) const {
    const std::chrono::duration<double> seconds = value.time_since_epoch();
    return [NSDate dateWithTimeIntervalSince1970:seconds.count()];
  }
  id operator()(const PropertyData& value) const {
    return [NSData dataWithBytes:value.data() length:value.size()];
  }
  id operator()(const PropertyArray& values) const {
    NSMutableArray* array = [NSMutableArray arrayWithCapacity:values.size()];
    for (const PropertyValue& value : values) {
      id element = objectOf(value);
      if (!element) return nil;
      [array addObject:element];
    }
    return array;
  }
  id operator()(const PropertyDictionary& values) const {
    NSMutableDictionary* dictionary = [NSMutableDictionary dictionaryWithCapacity:values.size()];
    for (const auto& [name, value] : values) {
      NSString* key = stringOf(name);
      id object = objectOf(value);
      if (!key || !object) return nil;
      [dictionary setObject:object forKey:key];
    }
    return dictionary;
  }
};

}  // namespace

std::optional<PropertyValue> propertyValueOf(id object) { return valueOf(object, 1); }

PropertyDictionary propertyDictionaryOf(NSDictionary* dictionary) {
  return dictionaryValue(dictionary, 1);
}

id objectOf(const PropertyValue& value) { return std::visit(ObjectMaker(), value.storage); }

}  // namespace kelvane
