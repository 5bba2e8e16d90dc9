// How values of a setting are kept as property-list objects. Pure functions, any thread.
//
// Bridge<V>::serialize(value): the object to store; absent for a value that is never stored, so
// that
//   writing it removes what is stored.
// Bridge<V>::deserialize(object): the value; absent when the object is of another kind.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <type_traits>

#include "platform/property_value.h"

namespace kelvane {

template <typename V>
struct Bridge;

// A boolean. A string is read too, as the JSON text of the elements of an array of booleans, of
// which the first counts: older versions stored "true" and "false".
template <>
struct Bridge<bool> {
  static std::optional<PropertyValue> serialize(bool value) { return value; }
  static std::optional<bool> deserialize(const PropertyValue& object);
};

// An array of numbers; the elements' order and repetitions say nothing. NaN is no number.
template <>
struct Bridge<std::set<double>> {
  static std::optional<PropertyValue> serialize(const std::set<double>& value);
  static std::optional<std::set<double>> deserialize(const PropertyValue& object);
};

template <>
struct Bridge<std::int64_t> {
  static std::optional<PropertyValue> serialize(std::int64_t value) { return value; }
  static std::optional<std::int64_t> deserialize(const PropertyValue& object) {
    return object.integer();
  }
};

template <>
struct Bridge<double> {
  static std::optional<PropertyValue> serialize(double value) { return value; }
  static std::optional<double> deserialize(const PropertyValue& object) { return object.number(); }
};

template <>
struct Bridge<Date> {
  static std::optional<PropertyValue> serialize(Date value) { return value; }
  static std::optional<Date> deserialize(const PropertyValue& object) { return object.date(); }
};

// The names of an enumeration's values, which count from 0: `static constexpr std::array values`.
template <typename E>
struct ChoiceNames;

template <typename E>
concept Choice = std::is_enum_v<E> && requires {
  ChoiceNames<E>::values.size();
};

// A choice is kept as the name of its value.
template <Choice E>
struct Bridge<E> {
  static std::optional<PropertyValue> serialize(E value) {
    return std::string(ChoiceNames<E>::values.at(static_cast<std::size_t>(value)));
  }
  static std::optional<E> deserialize(const PropertyValue& object) {
    const auto name = object.string();
    const auto& names = ChoiceNames<E>::values;
    for (std::size_t i = 0; name && i < names.size(); ++i)
      if (names[i] == *name) return static_cast<E>(i);
    return std::nullopt;
  }
};

// A value that may be missing: the empty optional is never stored.
template <typename V>
struct Bridge<std::optional<V>> {
  static std::optional<PropertyValue> serialize(const std::optional<V>& value) {
    return value ? Bridge<V>::serialize(*value) : std::nullopt;
  }
  static std::optional<std::optional<V>> deserialize(const PropertyValue& object) {
    auto value = Bridge<V>::deserialize(object);
    return value ? std::optional(std::move(value)) : std::nullopt;
  }
};

// The value in the form of an older version: JSON text in UTF-8. Absent when it can't be decoded.
template <typename V>
std::optional<V> decodeJson(const std::string& text);
template <>
std::optional<std::set<double>> decodeJson(const std::string& text);

}  // namespace kelvane
