#include "platform/linux/power/power_rules.h"

#include <string>

#include <gtest/gtest.h>

namespace kelvane {
namespace {

using Level = BatteryWarningLevel;

// "57" or "57 Good"; further descriptions after a comma, a UPS marked as such; "-" for no level.
std::string text(const std::vector<PropertyDictionary>& descriptions) {
  std::string all;
  for (const PropertyDictionary& each : descriptions) {
    if (!all.empty()) all += ", ";
    if (each.at("Type") == PropertyValue("UPS")) all += "UPS ";
    EXPECT_EQ(each.at("Is Present"), PropertyValue(true));
    EXPECT_EQ(each.count("Current Capacity"), each.count("Max Capacity"));
    if (each.contains("Max Capacity")) {
      EXPECT_EQ(each.at("Max Capacity"), PropertyValue(100));
      all += std::to_string(each.at("Current Capacity").integer().value());
    } else {
      all += "-";
    }
    if (each.contains("BatteryHealth")) all += " " + *each.at("BatteryHealth").string();
  }
  return all;
}

struct Expected {
  const char* descriptions;
  double estimate;
  Level warning = Level::none;
};

void expectReadings(const char* situation, const PowerReadings& readings,
                    const Expected& expected) {
  EXPECT_EQ(text(readings.descriptions), expected.descriptions) << situation;
  EXPECT_EQ(readings.timeRemainingEstimate, expected.estimate) << situation;
  EXPECT_EQ(readings.warningLevel, expected.warning) << situation;
}

Supply adapter(bool online) {
  Supply supply;
  supply.type = SupplyType::external;
  supply.online = online;
  return supply;
}

Supply battery(std::optional<int> capacity, SupplyStatus status,
               std::optional<std::int64_t> energyFull = std::nullopt,
               std::optional<std::int64_t> energyFullDesign = std::nullopt) {
  Supply supply;
  supply.type = SupplyType::battery;
  supply.status = status;
  supply.capacity = capacity;
  supply.energyFull = energyFull;
  supply.energyFullDesign = energyFullDesign;
  supply.voltageNow = 10'000'000;
  return supply;
}

TEST(PowerRules, OfTheKernelsSupplies) {
  using enum SupplyStatus;
  Supply mouse = battery(10, discharging);
  mouse.scope = SupplyScope::device;
  Supply ups = battery(100, full);
  ups.type = SupplyType::ups;
  Supply byEnergy = battery(std::nullopt, discharging, 50'000'000);
  byEnergy.energyNow = 20'000'000;
  Supply overfull = byEnergy;
  overfull.energyNow = 60'000'000;
  Supply byCharge = battery(10, discharging);
  byCharge.chargeFull = 1'000'000;  // 10 Wh at 10 V
  Supply emptyBay = battery(0, unknown);
  emptyBay.present = false;

  const struct {
    const char* situation;
    std::vector<Supply> supplies;
    Expected expected;
  } rows[] = {
      {"nothing", {}, {"", -2}},
      {"on battery", {adapter(false), battery(57, discharging)}, {"57", -1}},
      {"charging", {adapter(true), battery(57, charging)}, {"57", -2}},
      {"adapter not known", {battery(57, unknown)}, {"57", -2}},
      {"20 % is early", {adapter(false), battery(20, discharging)}, {"20", -1, Level::early}},
      {"21 % is not", {adapter(false), battery(21, discharging)}, {"21", -1}},
      {"5 % is final", {adapter(false), battery(5, discharging)}, {"5", -1, Level::final}},
      {"0 % is final", {adapter(false), battery(0, discharging)}, {"0", -1, Level::final}},
      {"no warning on power", {adapter(true), battery(5, charging)}, {"5", -2}},
      {"weak charger", {adapter(true), battery(5, discharging)}, {"5", -2}},
      {"no level", {adapter(false), battery(std::nullopt, discharging)}, {"-", -1}},
      {"100", {adapter(true), battery(100, charging)}, {"100", -2}},
      {"full at 95", {adapter(true), battery(95, full)}, {"100", -2}},
      {"full at its limit of 80", {adapter(true), battery(80, full)}, {"80", -2}},
      {"full at 94", {adapter(true), battery(94, full)}, {"94", -2}},
      {"held at 99", {adapter(true), battery(99, notCharging)}, {"99", -2}},
      {"one of two at 100", {battery(100, full), battery(99, charging)}, {"99", -2}},
      {"both full", {battery(100, notCharging), battery(96, full)}, {"100", -2}},
      {"level by energy", {adapter(false), byEnergy}, {"40", -1}},
      {"more energy than full", {adapter(false), overfull}, {"100", -1}},
      {"unequal batteries",
       {battery(90, discharging, 10'000'000), battery(10, discharging, 90'000'000)},
       {"18", -1, Level::early}},
      {"unequal, one by charge", {battery(90, discharging, 30'000'000), byCharge}, {"70", -1}},
      {"sizes not known",
       {battery(90, discharging, 10'000'000), battery(10, discharging)},
       {"50", -1}},
      {"a mouse beside", {adapter(false), mouse, battery(57, discharging)}, {"57", -1}},
      {"only a mouse", {mouse}, {"", -2}},
      {"empty bay", {adapter(false), emptyBay, battery(57, discharging)}, {"57", -1}},
      {"a UPS comes after", {adapter(true), ups, battery(80, charging)}, {"80, UPS 100", -2}},
      {"health 0.8", {battery(50, charging, 40'000'000, 50'000'000)}, {"50 Good", -2}},
      {"health 0.79", {battery(50, charging, 39'500'000, 50'000'000)}, {"50 Fair", -2}},
      {"health 0.5", {battery(50, charging, 25'000'000, 50'000'000)}, {"50 Fair", -2}},
      {"health 0.49", {battery(50, charging, 24'500'000, 50'000'000)}, {"50 Poor", -2}},
  };
  for (const auto& row : rows)
    expectReadings(row.situation, powerReadings(row.supplies, nullptr), row.expected);
}

UPowerDevice device(UPowerType type, double percentage, UPowerState state) {
  UPowerDevice device;
  device.type = type;
  device.percentage = percentage;
  device.state = state;
  return device;
}

UPowerDevice cell(double percentage, UPowerState state, double energyFull = 50,
                  double energyDesign = 50) {
  UPowerDevice battery = device(UPowerType::battery, percentage, state);
  battery.energyFull = energyFull;
  battery.energyDesign = energyDesign;
  battery.energy = energyFull * percentage / 100;
  return battery;
}

UPowerDevice warned(UPowerDevice device, UPowerWarning warning) {
  device.warning = warning;
  return device;
}

UPowerDevice lasting(UPowerDevice device, double seconds) {
  device.secondsToEmpty = seconds;
  return device;
}

TEST(PowerRules, OfUPower) {
  using enum UPowerState;
  const std::vector<Supply> out{adapter(false)};
  const std::vector<Supply> in{adapter(true)};
  const UPowerDevice ups = lasting(device(UPowerType::ups, 70, discharging), 600);
  const UPowerDevice line = device(UPowerType::linePower, 0, pendingCharge);
  const auto display = [](double percentage, UPowerState state) {
    return device(UPowerType::battery, percentage, state);
  };
  UPowerDevice mouse = cell(5, discharging);
  mouse.isPowerSupply = false;
  UPowerDevice emptyBay = cell(0, discharging);
  emptyBay.isPresent = false;
  UPowerDevice noLevel = display(0, discharging);
  noLevel.percentage.reset();
  UPowerDevice noHealth = cell(50, charging);
  noHealth.energyDesign.reset();

  const struct {
    const char* situation;
    std::vector<Supply> supplies;
    UPowerSnapshot upower;
    Expected expected;
  } rows[] = {
      {"no battery", in, {{}, {line}}, {"", -2}},
      {"time to empty", out, {lasting(display(57, discharging), 7260), {}}, {"57", 7260}},
      {"99 hours", out, {lasting(display(57, discharging), 356400), {}}, {"57", 356400}},
      {"more than 99 hours", out, {lasting(display(57, discharging), 356401), {}}, {"57", -1}},
      {"not known yet", out, {display(57, discharging), {}}, {"57", -1}},
      {"UPower lags behind the plug", out, {lasting(display(57, charging), 600), {}}, {"57", -1}},
      {"held at a limit on battery", out, {lasting(display(80, pendingCharge), 9), {}}, {"80", -1}},
      {"on power", in, {lasting(display(57, discharging), 7260), {}}, {"57", -2}},
      {"adapter not known", {}, {lasting(display(57, discharging), 7260), {}}, {"57", -2}},
      {"rounds up", out, {display(56.5, discharging), {}}, {"57", -1}},
      {"rounds down", out, {display(56.4, discharging), {}}, {"56", -1}},
      {"99.6 is not full", in, {display(99.6, charging), {cell(99.6, charging)}}, {"99 Good", -2}},
      {"full at 95", in, {display(95, fullyCharged), {cell(95, fullyCharged)}}, {"100 Good", -2}},
      {"full at 94.9", in, {display(94.9, fullyCharged), {}}, {"95", -2}},
      {"full for the composite, held at 96 for the battery",
       in,
       {display(96, fullyCharged), {cell(96, pendingCharge)}},
       {"96 Good", -2}},
      {"one of two not full",
       in,
       {display(99.8, fullyCharged), {cell(100, fullyCharged), cell(94, fullyCharged)}},
       {"99 Good", -2}},
      {"DisplayDevice before the batteries",
       out,
       {display(57, discharging), {cell(10, discharging)}},
       {"57 Good", -1}},
      {"DisplayDevice without a level", out, {noLevel, {cell(30, discharging)}}, {"30 Good", -1}},
      {"low",
       out,
       {warned(display(9, discharging), UPowerWarning::low), {}},
       {"9", -1, Level::early}},
      {"critical",
       out,
       {warned(display(4, discharging), UPowerWarning::critical), {}},
       {"4", -1, Level::final}},
      {"action",
       out,
       {warned(display(2, discharging), UPowerWarning::action), {}},
       {"2", -1, Level::final}},
      {"20 % without a warning",
       out,
       {warned(display(15, discharging), UPowerWarning::none), {}},
       {"15", -1}},
      {"a UPS is the DisplayDevice",
       out,
       {ups, {ups, warned(lasting(cell(30, discharging), 3000), UPowerWarning::low)}},
       {"30 Good, UPS 70", 3000, Level::early}},
      {"unequal batteries without DisplayDevice",
       out,
       {{}, {cell(90, pendingCharge, 10), lasting(cell(10, discharging, 90), 3600)}},
       {"18 Good", 7200}},
      {"the least urgent battery speaks",
       out,
       {{},
        {warned(cell(2, discharging), UPowerWarning::action),
         warned(cell(80, discharging), UPowerWarning::none)}},
       {"41 Good", -1}},
      {"a mouse and an empty bay",
       out,
       {{}, {mouse, emptyBay, cell(57, discharging)}},
       {"57 Good", -1}},
      {"only a UPS", {}, {ups, {ups}}, {"UPS 70", -2}},
      {"health of both together",
       in,
       {display(50, charging), {cell(50, charging, 10, 50), cell(50, charging, 30, 50)}},
       {"50 Poor", -2}},
      {"health of one not known", in, {display(50, charging), {noHealth}}, {"50", -2}},
  };
  for (const auto& row : rows)
    expectReadings(row.situation, powerReadings(row.supplies, &row.upower), row.expected);
}

}  // namespace
}  // namespace kelvane
