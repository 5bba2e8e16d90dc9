#include "platform/linux/power/registry_rules.h"

#include <gtest/gtest.h>

namespace kelvane {
namespace {

Supply adapter(std::optional<bool> online) {
  Supply supply;
  supply.type = SupplyType::external;
  supply.online = online;
  return supply;
}

Supply battery(std::optional<SupplyStatus> status) {
  Supply supply;
  supply.type = SupplyType::battery;
  supply.status = status;
  return supply;
}

Supply ofDevice(Supply supply) {
  supply.scope = SupplyScope::device;
  return supply;
}

Supply outOfItsBay(Supply supply) {
  supply.present = false;
  return supply;
}

struct Figures {
  std::int64_t now, full, design, rate;
};

Supply byEnergy(SupplyStatus status, Figures figures) {
  Supply supply = battery(status);
  supply.energyNow = figures.now;
  supply.energyFull = figures.full;
  supply.energyFullDesign = figures.design;
  supply.powerNow = figures.rate;
  supply.voltageMinDesign = 10'000'000;
  return supply;
}

Supply byCharge(SupplyStatus status, Figures figures) {
  Supply supply = battery(status);
  supply.chargeNow = figures.now;
  supply.chargeFull = figures.full;
  supply.chargeFullDesign = figures.design;
  supply.currentNow = figures.rate;
  return supply;
}

TEST(RegistryRules, ExternalConnected) {
  using enum SupplyStatus;
  const struct {
    const char* situation;
    std::vector<Supply> supplies;
    std::optional<bool> connected;
  } rows[] = {
      {"nothing at all", {}, std::nullopt},
      {"adapter in", {adapter(true), battery(charging)}, true},
      {"adapter out", {adapter(false), battery(discharging)}, false},
      {"one of two in", {adapter(false), adapter(true)}, true},
      {"a charger too weak", {adapter(true), battery(discharging)}, true},
      {"status lags behind the adapter", {adapter(false), battery(charging)}, false},
      {"a mouse's charger", {ofDevice(adapter(true)), battery(discharging)}, false},
      {"an adapter that doesn't tell", {adapter(std::nullopt), battery(discharging)}, false},
      {"charge limit, no adapter known", {battery(notCharging)}, true},
      {"full, no adapter known", {battery(full)}, true},
      {"second battery idle on battery", {battery(notCharging), battery(discharging)}, false},
      {"only a mouse", {ofDevice(battery(discharging))}, std::nullopt},
      {"empty bay", {outOfItsBay(battery(discharging)), battery(full)}, true},
      {"status unknown", {battery(unknown)}, std::nullopt},
      {"no status", {battery(std::nullopt)}, std::nullopt},
  };
  for (const auto& row : rows)
    EXPECT_EQ(externalConnected(row.supplies), row.connected) << row.situation;
}

TEST(RegistryRules, PropertiesOfTheBattery) {
  using enum SupplyStatus;
  const auto on = [](bool isCharging, int minutes) {
    return PropertyDictionary{
        {"ExternalConnected", true}, {"IsCharging", isCharging}, {"TimeRemaining", minutes}};
  };
  const auto with = [](PropertyDictionary properties, int full, int design) {
    properties.insert_or_assign("MaxCapacity", full);
    properties.insert_or_assign("DesignCapacity", design);
    return properties;
  };
  // 50 of 60 Wh now at 10 V: 5000 mAh when full, 6000 by design.
  const Figures half{25'000'000, 50'000'000, 60'000'000, 10'000'000};
  const Figures small{1'000'000, 2'000'000, 2'500'000, 500'000};  // 2000 mAh, by charge

  Supply noRate = byEnergy(charging, half);
  noRate.powerNow = 0;
  Supply trickle = byEnergy(charging, half);
  trickle.powerNow = 1;
  Supply limited = byEnergy(charging, half);
  limited.chargeEndPercent = 60;
  Supply noDesignVoltage = byEnergy(charging, half);
  noDesignVoltage.voltageMinDesign.reset();
  noDesignVoltage.voltageNow = 12'500'000;
  Supply noVoltage = byEnergy(charging, half);
  noVoltage.voltageMinDesign.reset();
  Supply byCurrent = byEnergy(charging, half);
  byCurrent.powerNow.reset();
  byCurrent.currentNow = 500'000;
  Supply byPercentage = byEnergy(charging, half);
  byPercentage.energyNow.reset();
  byPercentage.capacity = 80;
  Supply smallWithVoltage = byCharge(notCharging, small);
  smallWithVoltage.voltageMaxDesign = 10'000'000;
  Supply noDesign = byEnergy(notCharging, half);
  noDesign.energyFullDesign.reset();

  const struct {
    const char* situation;
    std::vector<Supply> supplies;
    PropertyDictionary properties;
  } rows[] = {
      {"no battery", {adapter(true)}, {}},
      {"only a mouse", {ofDevice(byEnergy(charging, half))}, {}},
      {"charging by energy", {byEnergy(charging, half)}, with(on(true, 150), 5000, 6000)},
      {"charging by charge", {byCharge(charging, small)}, with(on(true, 120), 2000, 2500)},
      {"full", {byEnergy(full, half)}, with(on(false, 0), 5000, 6000)},
      {"just plugged in: no rate yet", {noRate}, with(on(true, 65535), 5000, 6000)},
      {"a rate next to nothing", {trickle}, with(on(true, 65535), 5000, 6000)},
      {"charging ends at its limit", {limited}, with(on(true, 30), 5000, 6000)},
      {"rate as a current, by nominal voltage", {byCurrent}, with(on(true, 300), 5000, 6000)},
      {"energy now by its percentage", {byPercentage}, with(on(true, 60), 5000, 6000)},
      {"voltage of the moment", {noDesignVoltage}, with(on(true, 150), 4000, 4800)},
      {"no voltage", {noVoltage}, on(true, 150)},
      {"two batteries, one after the other",
       {byEnergy(charging, half), smallWithVoltage},
       with(on(true, 210), 7000, 8500)},
      {"charge and energy without a common unit",
       {byEnergy(charging, half), byCharge(notCharging, small)},
       with(on(true, 65535), 7000, 8500)},
      {"one battery doesn't know its design",
       {byEnergy(full, half), noDesign},
       with(on(false, 0), 5000, 6000)},
      {"empty bay",
       {outOfItsBay(byEnergy(charging, half)), byCharge(full, small)},
       with(on(false, 0), 2000, 2500)},
      {"nothing known", {battery(std::nullopt), adapter(true)}, {{"ExternalConnected", true}}},
  };
  for (const auto& row : rows)
    EXPECT_TRUE(registryProperties(row.supplies) == row.properties) << row.situation;
}

}  // namespace
}  // namespace kelvane
