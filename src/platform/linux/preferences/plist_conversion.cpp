#include "platform/linux/preferences/plist_conversion.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>

namespace kelvane {
namespace {

// Property lists count from here.
constexpr std::chrono::sys_seconds kEpoch =
    std::chrono::sys_days(std::chrono::year(2001) / std::chrono::January / 1);

std::int32_t secondsSinceEpoch(Date date) {
  using Limits = std::numeric_limits<std::int32_t>;
  const auto seconds = (std::chrono::floor<std::chrono::seconds>(date) - kEpoch).count();
  return static_cast<std::int32_t>(std::clamp<std::int64_t>(seconds, Limits::min(), Limits::max()));
}

Date dateAt(std::int32_t seconds) { return kEpoch + std::chrono::seconds(seconds); }

// Calls `visit(key, node)` for each entry.
template <typename Visitor>
void forEachEntry(plist_t dictionary, Visitor&& visit) {
  void* position = nullptr;
  plist_dict_new_iter(dictionary, &position);
  const std::unique_ptr<void, decltype(&std::free)> owner(position, &std::free);
  for (;;) {
    char* key = nullptr;
    plist_t node = nullptr;
    plist_dict_next_item(dictionary, position, &key, &node);
    const std::unique_ptr<char, decltype(&std::free)> keyOwner(key, &std::free);
    if (!key || !node) return;
    visit(key, node);
  }
}

std::optional<PropertyValue> arrayFrom(plist_t node) {
  PropertyArray array;
  void* position = nullptr;
  plist_array_new_iter(node, &position);
  const std::unique_ptr<void, decltype(&std::free)> owner(position, &std::free);
  for (;;) {
    plist_t element = nullptr;
    plist_array_next_item(node, position, &element);
    if (!element) return array;
    auto value = fromPlist(element);
    if (!value) return std::nullopt;
    array.push_back(*std::move(value));
  }
}

std::optional<PropertyValue> dictionaryFrom(plist_t node) {
  auto values = valuesOf(node);
  if (values.size() != plist_dict_get_size(node)) return std::nullopt;
  return values;
}

struct ToNode {
  plist_t operator()(bool value) const { return plist_new_bool(value); }
  plist_t operator()(std::int64_t value) const {
    return plist_new_uint(static_cast<std::uint64_t>(value));
  }
  plist_t operator()(double value) const { return plist_new_real(value); }
  plist_t operator()(const std::string& value) const { return plist_new_string(value.c_str()); }
  plist_t operator()(Date value) const { return plist_new_date(secondsSinceEpoch(value), 0); }
  plist_t operator()(const PropertyData& value) const {
    return plist_new_data(reinterpret_cast<const char*>(value.data()), value.size());
  }
  plist_t operator()(const PropertyArray& value) const {
    const plist_t array = plist_new_array();
    for (const auto& element : value) plist_array_append_item(array, toPlist(element).release());
    return array;
  }
  plist_t operator()(const PropertyDictionary& value) const {
    const plist_t dictionary = plist_new_dict();
    for (const auto& [key, element] : value)
      plist_dict_set_item(dictionary, key.c_str(), toPlist(element).release());
    return dictionary;
  }
};

}  // namespace

PlistNode toPlist(const PropertyValue& value) {
  return PlistNode(std::visit(ToNode(), value.storage));
}

std::optional<PropertyValue> fromPlist(plist_t node) {
  switch (plist_get_node_type(node)) {
    case PLIST_BOOLEAN: {
      std::uint8_t value = 0;
      plist_get_bool_val(node, &value);
      return value != 0;
    }
    case PLIST_UINT: {
      // Negative numbers come in two's complement.
      std::uint64_t value = 0;
      plist_get_uint_val(node, &value);
      return static_cast<std::int64_t>(value);
    }
    case PLIST_REAL: {
      double value = 0;
      plist_get_real_val(node, &value);
      return value;
    }
    case PLIST_STRING: {
      std::uint64_t length = 0;
      const char* text = plist_get_string_ptr(node, &length);
      return text ? std::string(text, length) : std::string();
    }
    case PLIST_DATE: {
      std::int32_t seconds = 0, microseconds = 0;
      plist_get_date_val(node, &seconds, &microseconds);
      return dateAt(seconds);
    }
    case PLIST_DATA: {
      std::uint64_t length = 0;
      const auto* bytes = reinterpret_cast<const std::byte*>(plist_get_data_ptr(node, &length));
      return bytes ? PropertyData(bytes, bytes + length) : PropertyData();
    }
    case PLIST_ARRAY:
      return arrayFrom(node);
    case PLIST_DICT:
      return dictionaryFrom(node);
    default:
      return std::nullopt;
  }
}

PropertyDictionary valuesOf(plist_t dictionary) {
  PropertyDictionary values;
  if (!dictionary || plist_get_node_type(dictionary) != PLIST_DICT) return values;
  forEachEntry(dictionary, [&](const char* key, plist_t node) {
    if (auto value = fromPlist(node)) values.insert_or_assign(key, *std::move(value));
  });
  return values;
}

PropertyValue asKept(PropertyValue value) {
  if (const auto date = value.date()) return dateAt(secondsSinceEpoch(*date));
  if (auto* array = std::get_if<PropertyArray>(&value.storage)) {
    for (auto& element : *array) element = asKept(std::move(element));
  } else if (auto* dictionary = std::get_if<PropertyDictionary>(&value.storage)) {
    for (auto& [key, element] : *dictionary) element = asKept(std::move(element));
  }
  return value;
}

}  // namespace kelvane
