// Attributes of power supplies, as a driver may give them, and all that is worked out of them.
#include <algorithm>
#include <string>
#include <vector>

#include <fuzzer/FuzzedDataProvider.h>

#include "platform/linux/power/power_rules.h"
#include "platform/linux/power/registry_rules.h"
#include "platform/linux/power/sysfs_supply.h"
#include "tests/fuzz/fuzzing.h"

using namespace kelvane;

namespace {

constexpr std::size_t kLongestText = 24;
constexpr std::int64_t kLargest = 1'000'000'000'000;

class Attributes {
 public:
  Attributes(const std::uint8_t* data, std::size_t size) : input_(data, size) {}

  bool isOver() { return input_.remaining_bytes() == 0; }
  std::string text() { return input_.ConsumeRandomLengthString(kLongestText); }

  Supply supply() {
    Supply made;
    // A word that is known more often than chance gives it.
    made.type = parseSupplyType(word({"Battery", "Mains", "USB", "UPS", "Wireless"}));
    made.scope = parseSupplyScope(word({"System", "Device"}));
    made.status = parseSupplyStatus(word({"Charging", "Discharging", "Not charging", "Full"}));
    if (const auto present = number()) made.present = *present != 0;
    if (const auto online = number()) made.online = *online != 0;
    made.capacity = parseSupplyPercent(text());
    made.chargeEndPercent = parseSupplyPercent(text());
    for (auto* figure : {&made.energyNow, &made.chargeNow, &made.powerNow, &made.currentNow})
      *figure = number();
    // The reader takes no zero for these.
    for (auto* figure :
         {&made.energyFull, &made.energyFullDesign, &made.chargeFull, &made.chargeFullDesign,
          &made.voltageMinDesign, &made.voltageMaxDesign, &made.voltageNow})
      *figure = parseSupplyNumber(text(), 1, kLargest);
    return made;
  }

 private:
  std::string word(const std::vector<std::string>& known) {
    const auto choice = input_.ConsumeIntegralInRange<std::size_t>(0, known.size());
    return choice < known.size() ? known[choice] + "\n" : text();
  }
  std::optional<std::int64_t> number() {
    const auto value = parseSupplyNumber(text(), 0, kLargest);
    require(!value || (*value >= 0 && *value <= kLargest), "a number is within its range");
    return value;
  }

  FuzzedDataProvider input_;
};

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Attributes attributes(data, size);
  std::vector<Supply> supplies;
  while (!attributes.isOver() && supplies.size() < 4) {
    supplies.push_back(attributes.supply());
    supplies.back().name = "BAT" + std::to_string(supplies.size());
    const auto capacity = supplies.back().capacity;
    require(!capacity || (*capacity >= 0 && *capacity <= 100), "a percentage is one");
  }
  const PropertyDictionary registry = registryProperties(supplies);
  require(registry.empty() || hasBattery(supplies), "an entry is a battery's");
  const PowerReadings readings = powerReadings(supplies, nullptr);
  for (const PropertyDictionary& description : readings.descriptions) {
    const auto level = description.find("Current Capacity");
    if (level == description.end()) continue;
    const auto percent = level->second.number();
    require(percent && *percent >= 0 && *percent <= 100, "a level is between 0 and 100");
  }
  require(readings.timeRemainingEstimate >= kTimeRemainingUnlimited &&
              readings.timeRemainingEstimate <= 99 * 3600.0,
          "a time is unknown, unlimited, or at most 99 hours");
  return 0;
}
