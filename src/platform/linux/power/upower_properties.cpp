#include "platform/linux/power/upower_properties.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string_view>

namespace kelvane {
namespace {

constexpr double kMostWattHours = 10'000;
constexpr double kMostSeconds = 1e9;

std::optional<bool> booleanOf(GVariant* value) {
  if (!g_variant_is_of_type(value, G_VARIANT_TYPE_BOOLEAN)) return std::nullopt;
  return g_variant_get_boolean(value) != FALSE;
}

std::optional<double> realOf(GVariant* value, double least, double most) {
  if (!g_variant_is_of_type(value, G_VARIANT_TYPE_DOUBLE)) return std::nullopt;
  const double real = g_variant_get_double(value);
  if (!(real >= least && real <= most)) return std::nullopt;  // NaN compares with nothing
  return real;
}

// 101 to 110 comes from batteries that have outgrown their stated capacity.
std::optional<double> percentOf(GVariant* value) {
  const auto percent = realOf(value, 0, 110);
  return percent ? std::optional(std::min(*percent, 100.0)) : std::nullopt;
}

std::optional<double> capacityOf(GVariant* value) {
  const auto wattHours = realOf(value, 0, kMostWattHours);
  return wattHours && *wattHours > 0 ? wattHours : std::nullopt;
}

std::optional<double> secondsOf(GVariant* value) {
  if (!g_variant_is_of_type(value, G_VARIANT_TYPE_INT64)) return std::nullopt;
  const auto seconds = static_cast<double>(g_variant_get_int64(value));
  return seconds > 0 && seconds <= kMostSeconds ? std::optional(seconds) : std::nullopt;
}

// An enumeration whose values are 1 to `last`.
template <typename T>
std::optional<T> oneOf(GVariant* value, T last) {
  if (!g_variant_is_of_type(value, G_VARIANT_TYPE_UINT32)) return std::nullopt;
  const std::uint32_t number = g_variant_get_uint32(value);
  if (number < 1 || number > static_cast<std::uint32_t>(last)) return std::nullopt;
  return static_cast<T>(number);
}

std::optional<UPowerType> typeOf(GVariant* value) {
  if (!g_variant_is_of_type(value, G_VARIANT_TYPE_UINT32)) return std::nullopt;
  // Mice, telephones and the like: many kinds, and more with each version.
  if (g_variant_get_uint32(value) > static_cast<std::uint32_t>(UPowerType::ups))
    return UPowerType::other;
  return oneOf(value, UPowerType::ups);
}

void applyProperty(UPowerDevice& device, std::string_view name, GVariant* value) {
  if (name == "Type") device.type = typeOf(value);
  if (name == "State") device.state = oneOf(value, UPowerState::pendingDischarge);
  if (name == "WarningLevel") device.warning = oneOf(value, UPowerWarning::action);
  if (name == "PowerSupply") device.isPowerSupply = booleanOf(value);
  if (name == "IsPresent") device.isPresent = booleanOf(value);
  if (name == "Online") device.isOnline = booleanOf(value);
  if (name == "Percentage") device.percentage = percentOf(value);
  if (name == "Energy") device.energy = realOf(value, 0, kMostWattHours);
  if (name == "EnergyFull") device.energyFull = capacityOf(value);
  if (name == "EnergyFullDesign") device.energyDesign = capacityOf(value);
  if (name == "TimeToEmpty") device.secondsToEmpty = secondsOf(value);
  if (name == "TimeToFull") device.secondsToFull = secondsOf(value);
}

}  // namespace

void applyProperties(UPowerDevice& device, GVariant* properties) {
  GVariantIter iterator;
  g_variant_iter_init(&iterator, properties);
  const char* name = nullptr;
  GVariant* value = nullptr;
  while (g_variant_iter_loop(&iterator, "{&sv}", &name, &value)) applyProperty(device, name, value);
}

}  // namespace kelvane
