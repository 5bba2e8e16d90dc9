// Where the battery's state comes from, and which batteries there are.

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

#include "platform/linux/power/power_rules.h"
#include "programs/kelvane-commands/doctor/diagnosis.h"

namespace kelvane {
namespace {

using Verdict = Finding::Verdict;

bool isServing(const UPowerFacts& upower) { return upower.isWanted && upower.isAnswering; }

Finding findingOfUPower(const PowerFacts& facts) {
  const UPowerFacts& upower = facts.upower;
  const std::string instead = ": the kernel’s files in " + facts.directory + " serve";
  const auto note = [&](const std::string& text, const char* remedy = "") {
    return Finding{Verdict::note, "UPower", text, remedy};
  };
  if (!upower.isWanted) return note("left out, as asked" + instead);
  if (!upower.busProblem.empty())
    return note("no system bus, " + upower.busProblem + instead,
                "Without UPower no time remaining is known: see why the system bus does not run.");
  if (upower.isAnswering) return {Verdict::ok, "UPower", "version " + upower.version};
  switch (upower.presence) {
    case Presence::running:
      return note("it does not answer" + instead, "Restart it: sudo systemctl restart upower");
    case Presence::startable:
      return {Verdict::ok, "UPower", "it does not run yet, the bus starts it for Kelvane"};
    case Presence::absent:
      break;
  }
  return note("it is not there" + instead,
              "Install the package upower: without it no time remaining is known.");
}

std::string named(const std::string& name, const std::optional<double>& percent) {
  return percent ? name + ", " + std::to_string(std::lround(*percent)) + " %" : name;
}

constexpr const char* kPeripheral = " is not counted: it powers a device, not the computer ";
constexpr const char* kUps = " is not counted: it is a UPS";
constexpr const char* kEmptyBay = " is not counted: its bay is empty";

std::vector<Finding> batteriesOfUPower(const UPowerFacts& upower) {
  std::vector<Finding> findings;
  for (const auto& [name, device] : upower.devices) {
    if (!device.type || device.type == UPowerType::linePower) continue;
    if (device.isSupply(UPowerType::battery))
      findings.push_back({Verdict::ok, "battery", named(name, device.percentage)});
    else if (!device.isPowerSupply.value_or(true))
      findings.push_back({Verdict::note, "battery", name + kPeripheral + "(PowerSupply=false)"});
    else if (device.type == UPowerType::ups)
      findings.push_back({Verdict::note, "battery", name + kUps});
    else if (device.type == UPowerType::battery)
      findings.push_back({Verdict::note, "battery", name + kEmptyBay});
    else
      findings.push_back({Verdict::note, "battery", name + " is not counted: it is no battery"});
  }
  return findings;
}

std::vector<Finding> batteriesOfKernel(const std::vector<Supply>& supplies) {
  std::vector<Finding> findings;
  for (const Supply& supply : supplies) {
    if (!supply.type || supply.type == SupplyType::external) continue;
    if (!supply.isOfComputer())
      findings.push_back({Verdict::note, "battery", supply.name + kPeripheral + "(scope Device)"});
    else if (supply.type == SupplyType::ups)
      findings.push_back({Verdict::note, "battery", supply.name + kUps});
    else if (!supply.isPresentBattery())
      findings.push_back({Verdict::note, "battery", supply.name + kEmptyBay});
    else
      findings.push_back({Verdict::ok, "battery", named(supply.name, supply.capacity)});
  }
  return findings;
}

// By the rules by which the application looks for one.
bool hasInternalBattery(const PowerFacts& facts) {
  UPowerSnapshot snapshot{facts.upower.display, {}};
  for (const auto& [name, device] : facts.upower.devices) snapshot.devices.push_back(device);
  const PowerReadings readings =
      powerReadings(facts.supplies, isServing(facts.upower) ? &snapshot : nullptr);
  return std::ranges::any_of(readings.descriptions, [](const PropertyDictionary& description) {
    return description.at("Type") == PropertyValue("InternalBattery");
  });
}

}  // namespace

void diagnosePower(const PowerFacts& facts, std::vector<Finding>& findings) {
  findings.push_back(findingOfUPower(facts));
  for (Finding& battery : isServing(facts.upower) ? batteriesOfUPower(facts.upower)
                                                  : batteriesOfKernel(facts.supplies))
    findings.push_back(std::move(battery));
  if (!hasInternalBattery(facts))
    findings.push_back({Verdict::problem, "battery", "none of a laptop: Kelvane refuses to start",
                        "If this computer has one, see what the kernel lists in " +
                            facts.directory + "; --power-supply names another folder.",
                        true});
}

}  // namespace kelvane
