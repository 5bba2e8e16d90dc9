#include "platform/linux/power/registry_rules.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <string>
#include <utility>

namespace kelvane {
namespace {

constexpr std::string_view kExternalConnected = "ExternalConnected";
constexpr std::string_view kIsCharging = "IsCharging";
constexpr std::string_view kTimeRemaining = "TimeRemaining";
constexpr std::string_view kMaxCapacity = "MaxCapacity";
constexpr std::string_view kDesignCapacity = "DesignCapacity";

// What the registry says while the time until full is not known.
constexpr std::int64_t kMinutesUnknown = 65535;

std::vector<Supply> presentBatteries(const std::vector<Supply>& supplies) {
  std::vector<Supply> batteries;
  std::ranges::copy_if(supplies, std::back_inserter(batteries), &Supply::isPresentBattery);
  return batteries;
}

std::optional<double> nominalVolts(const Supply& battery) {
  const auto microvolts = battery.nominalMicrovolts();
  return microvolts ? std::optional(static_cast<double>(*microvolts) / 1e6) : std::nullopt;
}

std::optional<double> milliampereHours(const Supply& battery, std::optional<std::int64_t> charge,
                                       std::optional<std::int64_t> energy) {
  if (charge) return static_cast<double>(*charge) / 1e3;
  const auto volts = nominalVolts(battery);
  if (!energy || !volts) return std::nullopt;
  return static_cast<double>(*energy) / 1e3 / *volts;
}

struct Capacities {
  std::optional<double> full, design;  // mAh
};

// Over the batteries that know both figures, so that their ratio means something; if there are
// none, over those that know one.
Capacities summedCapacities(const std::vector<Supply>& batteries) {
  std::vector<Capacities> all;
  all.reserve(batteries.size());
  for (const Supply& battery : batteries)
    all.push_back({milliampereHours(battery, battery.chargeFull, battery.energyFull),
                   milliampereHours(battery, battery.chargeFullDesign, battery.energyFullDesign)});
  const bool anyKnowsBoth =
      std::ranges::any_of(all, [](const Capacities& each) { return each.full && each.design; });
  Capacities sum;
  for (const Capacities& each : all) {
    if (anyKnowsBoth && !(each.full && each.design)) continue;
    if (each.full) sum.full = sum.full.value_or(0) + *each.full;
    if (each.design) sum.design = sum.design.value_or(0) + *each.design;
  }
  return sum;
}

struct Filling {
  double missing = 0;  // until charging ends: µWh, or µAh where only the ratio to the rate counts
  double rate = 0;     // µW or µA likewise; 0 when it isn't charging or isn't known
};

std::optional<Filling> fillingOf(const Supply& battery, bool isOnlyBattery) {
  const bool byEnergy = battery.energyFull.has_value();
  const auto full = byEnergy ? battery.energyFull : battery.chargeFull;
  const auto now = byEnergy ? battery.energyNow : battery.chargeNow;
  if (!full || (!now && !battery.capacity)) return std::nullopt;
  const double whole = static_cast<double>(*full);
  const double held = now ? static_cast<double>(*now) : whole * *battery.capacity / 100;

  // With a charge limit set, charging ends there and not at full.
  Filling filling{std::max(0.0, whole * battery.chargeEndPercent.value_or(100) / 100 - held)};
  if (battery.status == SupplyStatus::charging) {
    const auto direct = byEnergy ? battery.powerNow : battery.currentNow;
    const auto other = byEnergy ? battery.currentNow : battery.powerNow;
    const auto volts = battery.voltageNow ? static_cast<double>(*battery.voltageNow) / 1e6
                                          : nominalVolts(battery).value_or(0);
    if (direct)
      filling.rate = static_cast<double>(*direct);
    else if (other && volts > 0)
      filling.rate = static_cast<double>(*other) * (byEnergy ? volts : 1 / volts);
  }
  if (byEnergy || isOnlyBattery) return filling;
  const auto volts = nominalVolts(battery);
  if (!volts) return std::nullopt;
  return Filling{filling.missing * *volts, filling.rate * *volts};
}

// Batteries of one computer are often charged one after the other, hence the sums.
std::int64_t minutesToFull(const std::vector<Supply>& batteries) {
  Filling sum;
  for (const Supply& battery : batteries) {
    const auto filling = fillingOf(battery, batteries.size() == 1);
    if (!filling) return kMinutesUnknown;
    sum.missing += filling->missing;
    sum.rate += filling->rate;
  }
  if (sum.rate <= 0) return kMinutesUnknown;
  const double minutes = sum.missing / sum.rate * 60;
  return minutes < static_cast<double>(kMinutesUnknown) ? static_cast<std::int64_t>(minutes)
                                                        : kMinutesUnknown;
}

bool anyHasStatus(const std::vector<Supply>& batteries, SupplyStatus status) {
  return std::ranges::find(batteries, status, &Supply::status) != batteries.end();
}

}  // namespace

std::optional<bool> externalConnected(const std::vector<Supply>& supplies) {
  std::optional<bool> connected;
  for (const Supply& supply : supplies)
    if (supply.type == SupplyType::external && supply.isOfComputer() && supply.online)
      connected = connected.value_or(false) || *supply.online;
  if (connected) return connected;

  const auto batteries = presentBatteries(supplies);
  if (anyHasStatus(batteries, SupplyStatus::discharging)) return false;
  if (anyHasStatus(batteries, SupplyStatus::charging) ||
      anyHasStatus(batteries, SupplyStatus::full) ||
      anyHasStatus(batteries, SupplyStatus::notCharging))
    return true;
  return std::nullopt;
}

bool hasBattery(const std::vector<Supply>& supplies) {
  return std::ranges::any_of(supplies, &Supply::isBattery);
}

std::optional<double> energyWhenFull(const Supply& battery) {
  if (battery.energyFull) return static_cast<double>(*battery.energyFull);
  const auto volts = nominalVolts(battery);
  if (!battery.chargeFull || !volts) return std::nullopt;
  return static_cast<double>(*battery.chargeFull) * *volts;
}

SupplyFields fieldsNeededFor(std::string_view property, const std::vector<Supply>& state) {
  if (property == kMaxCapacity || property == kDesignCapacity) return SupplyFields::capacities;
  // Only what is being filled has a time until it is full.
  if (property == kTimeRemaining && anyHasStatus(presentBatteries(state), SupplyStatus::charging))
    return SupplyFields::all;
  return SupplyFields::state;
}

std::optional<PropertyValue> registryProperty(const std::vector<Supply>& supplies,
                                              std::string_view name) {
  if (!hasBattery(supplies)) return std::nullopt;
  if (name == kExternalConnected) {
    const auto connected = externalConnected(supplies);
    return connected ? std::optional<PropertyValue>(*connected) : std::nullopt;
  }
  const auto batteries = presentBatteries(supplies);
  if (name == kIsCharging || name == kTimeRemaining) {
    if (std::ranges::none_of(batteries, [](const Supply& each) { return each.status.has_value(); }))
      return std::nullopt;
    const bool isCharging = anyHasStatus(batteries, SupplyStatus::charging);
    if (name == kIsCharging) return isCharging;
    return isCharging ? minutesToFull(batteries) : std::int64_t{0};
  }
  const Capacities capacities = summedCapacities(batteries);
  const auto capacity = name == kMaxCapacity      ? capacities.full
                        : name == kDesignCapacity ? capacities.design
                                                  : std::nullopt;
  return capacity ? std::optional<PropertyValue>(std::int64_t{std::llround(*capacity)})
                  : std::nullopt;
}

PropertyDictionary registryProperties(const std::vector<Supply>& supplies) {
  PropertyDictionary properties;
  for (const std::string_view name :
       {kExternalConnected, kIsCharging, kTimeRemaining, kMaxCapacity, kDesignCapacity})
    if (auto value = registryProperty(supplies, name))
      properties.insert_or_assign(std::string(name), *std::move(value));
  return properties;
}

}  // namespace kelvane
