// Property values as libplist's nodes and back. Pure, any thread.
//
// Dates are whole seconds, because XML property lists keep no more.
#pragma once

#include <memory>
#include <optional>

#include <plist/plist.h>

#include "platform/property_value.h"

namespace kelvane {

struct PlistDeleter {
  void operator()(void* node) const { plist_free(node); }
};
// Owns a node with all that is in it.
using PlistNode = std::unique_ptr<void, PlistDeleter>;

// Dates that a property list can't express (before 1932, after 2069) become the nearest it can.
PlistNode toPlist(const PropertyValue& value);

// Absent for a node of a kind that values don't have, or with such a one in it.
std::optional<PropertyValue> fromPlist(plist_t node);

// What of a dictionary can be expressed as values; nothing for a node of another kind.
PropertyDictionary valuesOf(plist_t dictionary);

// The value as it will be read again once it was stored.
PropertyValue asKept(PropertyValue value);

}  // namespace kelvane
