#include "store/bridge.h"

#include <algorithm>
#include <cmath>

#include <nlohmann/json.hpp>

namespace kelvane {
namespace {

using Json = nlohmann::json;

// Absent when the text is not a JSON array.
std::optional<Json> parseArray(const std::string& text) {
  auto json = Json::parse(text, nullptr, /*allow_exceptions=*/false);
  return json.is_array() ? std::optional(std::move(json)) : std::nullopt;
}

}  // namespace

std::optional<bool> Bridge<bool>::deserialize(const PropertyValue& object) {
  if (const auto value = object.boolean()) return value;
  const auto text = object.string();
  if (!text) return std::nullopt;
  const auto array = parseArray("[" + *text + "]");
  if (!array || array->empty()) return std::nullopt;
  if (!std::ranges::all_of(*array, [](const Json& each) { return each.is_boolean(); }))
    return std::nullopt;
  return array->front().get<bool>();
}

std::optional<PropertyValue> Bridge<std::set<double>>::serialize(const std::set<double>& value) {
  return PropertyArray(value.begin(), value.end());
}

std::optional<std::set<double>> Bridge<std::set<double>>::deserialize(const PropertyValue& object) {
  const PropertyArray* array = object.array();
  if (!array) return std::nullopt;
  std::set<double> value;
  for (const auto& element : *array) {
    const auto number = element.number();
    if (!number || std::isnan(*number)) return std::nullopt;
    value.insert(*number);
  }
  return value;
}

template <>
std::optional<std::set<double>> decodeJson(const std::string& text) {
  const auto array = parseArray(text);
  if (!array || !std::ranges::all_of(*array, [](const Json& each) { return each.is_number(); }))
    return std::nullopt;
  return array->get<std::set<double>>();
}

}  // namespace kelvane
