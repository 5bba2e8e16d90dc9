#include "platform/linux/power/upower_properties.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <string_view>
#include <variant>

using std::string_view_literals::operator""sv;

namespace kelvane {
namespace {

constexpr double kMostWattHours = 10'000;
constexpr double kMostSeconds = 1e9;

std::optional<bool> booleanOf(const BusScalar& value) {
  const bool* flag = std::get_if<bool>(&value);
  return flag ? std::optional(*flag) : std::nullopt;
}

std::optional<double> realOf(const BusScalar& value, double least, double most) {
  const double* real = std::get_if<double>(&value);
  if (!real || !(*real >= least && *real <= most)) return std::nullopt;  // NaN is neither
  return *real;
}

// 101 to 110 comes from batteries that have outgrown their stated capacity.
std::optional<double> percentOf(const BusScalar& value) {
  const auto percent = realOf(value, 0, 110);
  return percent ? std::optional(std::min(*percent, 100.0)) : std::nullopt;
}

std::optional<double> capacityOf(const BusScalar& value) {
  const auto wattHours = realOf(value, 0, kMostWattHours);
  return wattHours && *wattHours > 0 ? wattHours : std::nullopt;
}

std::optional<double> secondsOf(const BusScalar& value) {
  const std::int64_t* whole = std::get_if<std::int64_t>(&value);
  const double seconds = whole ? static_cast<double>(*whole) : 0;
  return seconds > 0 && seconds <= kMostSeconds ? std::optional(seconds) : std::nullopt;
}

// An enumeration whose values are 1 to `last`.
template <typename T>
std::optional<T> oneOf(const BusScalar& value, T last) {
  const std::uint32_t* number = std::get_if<std::uint32_t>(&value);
  if (!number || *number < 1 || *number > static_cast<std::uint32_t>(last)) return std::nullopt;
  return static_cast<T>(*number);
}

std::optional<UPowerType> typeOf(const BusScalar& value) {
  // Mice, telephones and the like: many kinds, and more with each version.
  const std::uint32_t* number = std::get_if<std::uint32_t>(&value);
  if (number && *number > static_cast<std::uint32_t>(UPowerType::ups)) return UPowerType::other;
  return oneOf(value, UPowerType::ups);
}

void applyProperty(UPowerDevice& device, std::string_view name, const BusScalar& value) {
  if (name == "Type"sv) device.type = typeOf(value);
  if (name == "State"sv) device.state = oneOf(value, UPowerState::pendingDischarge);
  if (name == "WarningLevel"sv) device.warning = oneOf(value, UPowerWarning::action);
  if (name == "PowerSupply"sv) device.isPowerSupply = booleanOf(value);
  if (name == "IsPresent"sv) device.isPresent = booleanOf(value);
  if (name == "Online"sv) device.isOnline = booleanOf(value);
  if (name == "Percentage"sv) device.percentage = percentOf(value);
  if (name == "Energy"sv) device.energy = realOf(value, 0, kMostWattHours);
  if (name == "EnergyFull"sv) device.energyFull = capacityOf(value);
  if (name == "EnergyFullDesign"sv) device.energyDesign = capacityOf(value);
  if (name == "TimeToEmpty"sv) device.secondsToEmpty = secondsOf(value);
  if (name == "TimeToFull"sv) device.secondsToFull = secondsOf(value);
}

}  // namespace

void applyProperties(UPowerDevice& device, const ScalarProperties& properties) {
  for (const auto& [name, value] : properties) applyProperty(device, name, value);
}

}  // namespace kelvane
