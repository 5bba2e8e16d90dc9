// Power supplies as the Linux kernel lists them: one folder per supply, one small text file per
// attribute. Names, units and words are those of the kernel's
// Documentation/ABI/testing/sysfs-class-power and Documentation/power/power_supply_class.rst.
//
// Any thread. Every figure is optional: a file that is missing, unreadable, no regular file, empty,
// longer than a page, not of the stated form, or out of any plausible range is an absent figure and
// nothing more.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelvane {

inline constexpr const char* kSystemPowerSupplyDirectory = "/sys/class/power_supply";

// `external` is any supply that feeds the computer from outside: Mains, USB in all its kinds,
// Wireless.
enum class SupplyType { battery, ups, external };
enum class SupplyScope { system, device };  // device: powers a peripheral, not the computer
enum class SupplyStatus { unknown, charging, discharging, notCharging, full };

struct Supply {
  std::string name;  // the folder's name, "BAT0"
  std::optional<SupplyType> type;
  std::optional<SupplyScope> scope;
  std::optional<SupplyStatus> status;
  std::optional<bool> present;
  std::optional<bool> online;           // external ones only; 1 (fixed) and 2 (programmable) are
  std::optional<int> capacity;          // percent, 0 to 100
  std::optional<int> chargeEndPercent;  // where charging stops, 1 to 100

  std::optional<std::int64_t> energyNow, energyFull, energyFullDesign;         // µWh
  std::optional<std::int64_t> chargeNow, chargeFull, chargeFullDesign;         // µAh
  std::optional<std::int64_t> voltageMinDesign, voltageMaxDesign, voltageNow;  // µV, above 0
  std::optional<std::int64_t> powerNow;    // µW, without its sign: drivers disagree on it
  std::optional<std::int64_t> currentNow;  // µA, without its sign

  bool operator==(const Supply&) const = default;

  bool isOfComputer() const { return scope != SupplyScope::device; }
  // A battery of the computer; one that is told to be missing from its bay is none.
  bool isBattery() const { return type == SupplyType::battery && isOfComputer(); }
  bool isPresentBattery() const { return isBattery() && present.value_or(true); }
  // The voltage at which a battery's energy and charge are converted into each other.
  std::optional<std::int64_t> nominalMicrovolts() const {
    return voltageMinDesign ? voltageMinDesign : voltageMaxDesign ? voltageMaxDesign : voltageNow;
  }
};

// What a reading fetches. Some drivers ask the hardware for each file, so whoever wants to know
// only whether the adapter is in does not read the figures.
enum class SupplyFields {
  state,       // type, scope, present, online, status
  capacities,  // and what the capacities in charge follow from: charge when full and by design, or,
               // where one of them is unknown, the energies, with a voltage to convert them
  all,
};

// The forms of the attribute files: the text with at most white space around it, else absent.
std::optional<SupplyType> parseSupplyType(std::string_view text);
std::optional<SupplyScope> parseSupplyScope(std::string_view text);
std::optional<SupplyStatus> parseSupplyStatus(std::string_view text);
// A whole decimal number between `least` and `most`.
std::optional<std::int64_t> parseSupplyNumber(std::string_view text, std::int64_t least,
                                              std::int64_t most);
// A percentage; 101 to 110 comes from batteries that have outgrown their stated capacity and is
// 100.
std::optional<int> parseSupplyPercent(std::string_view text);

}  // namespace kelvane
