// A property-list value: what preferences, device properties and power-source descriptions are made
// of. Plain value, any thread.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace kelvane {

// A moment in wall-clock time. Property lists in XML keep whole seconds.
using Date = std::chrono::sys_time<std::chrono::microseconds>;

struct PropertyValue;
using PropertyArray = std::vector<PropertyValue>;
using PropertyDictionary = std::map<std::string, PropertyValue, std::less<>>;
using PropertyData = std::vector<std::byte>;

// Booleans, whole numbers and reals are different kinds here; `number` reads either number.
struct PropertyValue {
  using Storage = std::variant<bool, std::int64_t, double, std::string, Date, PropertyData,
                               PropertyArray, PropertyDictionary>;

  PropertyValue(bool v) : storage(v) {}                      // NOLINT(google-explicit-constructor)
  PropertyValue(int v) : storage(std::int64_t{v}) {}         // NOLINT
  PropertyValue(std::int64_t v) : storage(v) {}              // NOLINT
  PropertyValue(double v) : storage(v) {}                    // NOLINT
  PropertyValue(const char* v) : storage(std::string(v)) {}  // NOLINT
  PropertyValue(std::string v) : storage(std::move(v)) {}    // NOLINT
  PropertyValue(Date v) : storage(v) {}                      // NOLINT
  PropertyValue(PropertyData v) : storage(std::move(v)) {}   // NOLINT
  PropertyValue(PropertyArray v) : storage(std::move(v)) {}  // NOLINT
  PropertyValue(PropertyDictionary v) : storage(std::move(v)) {}  // NOLINT

  // The value if it is of this kind, else absent.
  std::optional<bool> boolean() const { return as<bool>(); }
  std::optional<std::int64_t> integer() const { return as<std::int64_t>(); }
  std::optional<std::string> string() const { return as<std::string>(); }
  std::optional<Date> date() const { return as<Date>(); }
  // A whole number or a real, as a real.
  std::optional<double> number() const {
    if (const auto whole = integer()) return static_cast<double>(*whole);
    return as<double>();
  }
  const PropertyArray* array() const { return std::get_if<PropertyArray>(&storage); }
  const PropertyDictionary* dictionary() const { return std::get_if<PropertyDictionary>(&storage); }

  bool operator==(const PropertyValue& other) const { return storage == other.storage; }

  Storage storage;

 private:
  template <typename T>
  std::optional<T> as() const {
    const T* value = std::get_if<T>(&storage);
    return value ? std::optional<T>(*value) : std::nullopt;
  }
};

}  // namespace kelvane
