#include "platform/linux/power/power_rules.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>

#include "platform/linux/power/registry_rules.h"

namespace kelvane {
namespace {

constexpr double kLongestEstimate = 99 * 3600.0;  // seconds; more is a rate next to zero

struct Cell {
  double level = 0;              // percent
  std::optional<double> weight;  // capacity when full, in one unit for all
  bool isFull = false;           // as the battery itself says
};

// Of unequal batteries the larger one counts more; without their sizes all count the same.
std::optional<double> combinedLevel(const std::vector<Cell>& cells) {
  if (cells.empty()) return std::nullopt;
  const bool isWeighted =
      std::ranges::all_of(cells, [](const Cell& cell) { return cell.weight.has_value(); });
  double sum = 0;
  double weights = 0;
  for (const Cell& cell : cells) {
    const double weight = isWeighted ? *cell.weight : 1;
    sum += cell.level * weight;
    weights += weight;
  }
  return sum / weights;
}

// 100 is kept for a battery that takes no more: 99.6 % while charging is not full.
std::int64_t shownLevel(double level, const std::vector<Cell>& cells) {
  const bool isFull = !cells.empty() && std::ranges::all_of(cells, [](const Cell& cell) {
    return cell.level >= 100 || (cell.isFull && cell.level >= 95);
  });
  return isFull ? 100 : std::min<std::int64_t>(std::llround(level), 99);
}

PropertyDictionary description(const char* type, std::optional<double> level,
                               const std::vector<Cell>& cells) {
  PropertyDictionary dictionary{{"Type", type}, {"Is Present", true}};
  if (level) {
    dictionary.insert_or_assign("Current Capacity", shownLevel(*level, cells));
    dictionary.insert_or_assign("Max Capacity", 100);
  }
  return dictionary;
}

void addHealth(PropertyDictionary& dictionary, std::optional<double> full,
               std::optional<double> design) {
  if (!full || !design) return;
  const double ratio = *full / *design;
  dictionary.insert_or_assign("BatteryHealth",
                              ratio >= 0.8 ? "Good" : (ratio >= 0.5 ? "Fair" : "Poor"));
}

// ---- The kernel's word

std::optional<double> levelOf(const Supply& supply) {
  if (supply.capacity) return *supply.capacity;
  const auto ratio = [](std::optional<std::int64_t> now,
                        std::optional<std::int64_t> full) -> std::optional<double> {
    if (!now || !full) return std::nullopt;
    return std::min(100.0, 100.0 * static_cast<double>(*now) / static_cast<double>(*full));
  };
  const auto byEnergy = ratio(supply.energyNow, supply.energyFull);
  return byEnergy ? byEnergy : ratio(supply.chargeNow, supply.chargeFull);
}

std::optional<Cell> cellOf(const Supply& supply) {
  const auto level = levelOf(supply);
  if (!level) return std::nullopt;
  return Cell{*level, energyWhenFull(supply), supply.status == SupplyStatus::full};
}

std::optional<double> numberIn(const PropertyDictionary& dictionary, const char* key) {
  const auto found = dictionary.find(key);
  return found == dictionary.end() ? std::nullopt : found->second.number();
}

PowerReadings readingsOfKernel(const std::vector<Supply>& supplies) {
  PowerReadings readings;
  std::vector<Cell> cells;
  bool hasPresentBattery = false;
  for (const Supply& supply : supplies) {
    if (!supply.isPresentBattery()) continue;
    hasPresentBattery = true;
    if (const auto cell = cellOf(supply)) cells.push_back(*cell);
  }
  if (hasPresentBattery) {
    PropertyDictionary battery = description("InternalBattery", combinedLevel(cells), cells);
    const auto capacity = [&](const char* name) {
      const auto value = registryProperty(supplies, name);
      return value ? value->number() : std::nullopt;
    };
    addHealth(battery, capacity("MaxCapacity"), capacity("DesignCapacity"));
    readings.descriptions.push_back(std::move(battery));
  }
  for (const Supply& supply : supplies) {
    if (supply.type != SupplyType::ups || !supply.isOfComputer()) continue;
    if (!supply.present.value_or(true)) continue;
    const auto cell = cellOf(supply);
    readings.descriptions.push_back(
        description("UPS", levelOf(supply), cell ? std::vector{*cell} : std::vector<Cell>{}));
  }

  if (externalConnected(supplies).value_or(true)) return readings;
  readings.timeRemainingEstimate = kTimeRemainingUnknown;
  if (!hasPresentBattery) return readings;
  const auto shown = numberIn(readings.descriptions.front(), "Current Capacity");
  if (shown && *shown <= 5)
    readings.warningLevel = BatteryWarningLevel::final;
  else if (shown && *shown <= 20)
    readings.warningLevel = BatteryWarningLevel::early;
  return readings;
}

// ---- UPower's word

std::vector<Cell> cellsOf(const std::vector<UPowerDevice>& devices) {
  std::vector<Cell> cells;
  for (const UPowerDevice& device : devices)
    if (device.percentage)
      cells.push_back(
          {*device.percentage, device.energyFull, device.state == UPowerState::fullyCharged});
  return cells;
}

// The rate of each battery that is being emptied follows from its own estimate; the energy of the
// others is used up after it.
std::optional<double> combinedSecondsToEmpty(const std::vector<UPowerDevice>& batteries) {
  if (batteries.size() == 1) return batteries.front().secondsToEmpty;
  double energy = 0;
  double rate = 0;
  for (const UPowerDevice& battery : batteries) {
    if (!battery.energy) return std::nullopt;
    energy += *battery.energy;
    if (battery.state == UPowerState::discharging && battery.secondsToEmpty)
      rate += *battery.energy / *battery.secondsToEmpty;
  }
  return rate > 0 ? std::optional(energy / rate) : std::nullopt;
}

// The batteries together as one device, for a computer whose DisplayDevice is no battery.
UPowerDevice combined(const std::vector<UPowerDevice>& batteries) {
  UPowerDevice composite;
  composite.type = UPowerType::battery;
  composite.percentage = combinedLevel(cellsOf(batteries));
  composite.secondsToEmpty = combinedSecondsToEmpty(batteries);
  for (const UPowerDevice& battery : batteries) {
    if (battery.state == UPowerState::discharging) composite.state = UPowerState::discharging;
    // The computer runs as long as one battery does, so the least urgent one speaks.
    if (battery.warning)
      composite.warning = std::min(composite.warning.value_or(*battery.warning), *battery.warning);
  }
  return composite;
}

void addHealth(PropertyDictionary& dictionary, const std::vector<UPowerDevice>& batteries) {
  std::optional<double> full;
  std::optional<double> design;
  for (const UPowerDevice& battery : batteries) {
    if (!battery.energyFull || !battery.energyDesign) continue;
    full = full.value_or(0) + *battery.energyFull;
    design = design.value_or(0) + *battery.energyDesign;
  }
  addHealth(dictionary, full, design);
}

BatteryWarningLevel warningOf(const UPowerDevice& device) {
  switch (device.warning.value_or(UPowerWarning::none)) {
    case UPowerWarning::low:
      return BatteryWarningLevel::early;
    case UPowerWarning::critical:
    case UPowerWarning::action:
      return BatteryWarningLevel::final;
    case UPowerWarning::none:
    case UPowerWarning::discharging:
      break;
  }
  return BatteryWarningLevel::none;
}

double estimateOf(const UPowerDevice& device, std::optional<bool> isConnected) {
  if (isConnected.value_or(true)) return kTimeRemainingUnlimited;
  if (device.state != UPowerState::discharging || !device.secondsToEmpty ||
      *device.secondsToEmpty > kLongestEstimate)
    return kTimeRemainingUnknown;
  return *device.secondsToEmpty;
}

PowerReadings readingsOfUPower(const std::vector<Supply>& supplies, const UPowerSnapshot& upower) {
  std::vector<UPowerDevice> batteries;
  std::vector<UPowerDevice> upses;
  for (const UPowerDevice& device : upower.devices) {
    if (device.isSupply(UPowerType::battery)) batteries.push_back(device);
    if (device.isSupply(UPowerType::ups)) upses.push_back(device);
  }
  const bool displayServes = upower.display.isSupply(UPowerType::battery);
  if (displayServes && batteries.empty()) batteries.push_back(upower.display);

  PowerReadings readings;
  // Without a battery of its own the computer may still hang on a UPS.
  UPowerDevice composite = upower.display;
  if (!batteries.empty()) {
    if (!displayServes) composite = combined(batteries);
    const auto cells = cellsOf(batteries);
    const auto level = composite.percentage ? composite.percentage : combinedLevel(cells);
    PropertyDictionary battery = description("InternalBattery", level, cells);
    addHealth(battery, batteries);
    readings.descriptions.push_back(std::move(battery));
  }
  for (const UPowerDevice& ups : upses)
    readings.descriptions.push_back(description("UPS", ups.percentage, cellsOf({ups})));
  readings.timeRemainingEstimate = estimateOf(composite, externalConnected(supplies));
  readings.warningLevel = warningOf(composite);
  return readings;
}

}  // namespace

PowerReadings powerReadings(const std::vector<Supply>& supplies, const UPowerSnapshot* upower) {
  return upower ? readingsOfUPower(supplies, *upower) : readingsOfKernel(supplies);
}

}  // namespace kelvane
