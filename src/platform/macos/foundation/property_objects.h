// Property-list values as Foundation's objects, and back. Pure functions, any thread.
//
// Objective-C++ only: adaptors include it, their headers do not.
#pragma once

#include <optional>

#import <Foundation/Foundation.h>

#include "platform/property_value.h"

namespace kelvane {

// Absent for nil, for a class that property lists don't have, for a date that microseconds can't
// count, for an array with such an element, and beyond 32 levels. A dictionary merely lacks the
// entries that have no value or whose key is no string. Objects of Core Foundation may be passed.
std::optional<PropertyValue> propertyValueOf(id _Nullable object);

// The same for a dictionary; empty for nil.
PropertyDictionary propertyDictionaryOf(NSDictionary* _Nullable dictionary);

// nil when a text somewhere in the value is no UTF-8.
id _Nullable objectOf(const PropertyValue& value);

}  // namespace kelvane
