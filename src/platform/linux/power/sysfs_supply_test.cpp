#include "platform/linux/power/sysfs_supply.h"

#include <filesystem>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/power/registry_rules.h"
#include "platform/linux/power/supply_reader.h"
#include "platform/linux/power/supply_tree_test.h"
#include "platform/linux/power/sysfs_device_registry.h"

namespace kelvane {
namespace {

const Supply& named(const std::vector<Supply>& supplies, const std::string& name) {
  for (const Supply& supply : supplies)
    if (supply.name == name) return supply;
  throw std::runtime_error("no supply " + name);
}

TEST(SysfsSupply, ReadsEveryFigureOfABattery) {
  const SupplyTree tree;
  tree.set("BAT0", {{"type", "Battery"},
                    {"scope", "System"},
                    {"present", "1"},
                    {"status", "Not charging"},
                    {"capacity", "103"},
                    {"charge_control_end_threshold", "80"},
                    {"charge_now", "0"},
                    {"charge_full", "4000000"},
                    {"charge_full_design", "5000000"},
                    {"voltage_min_design", "11100000"},
                    {"voltage_max_design", "12600000"},
                    {"voltage_now", "11400000"},
                    {"power_now", "-9500000"},
                    {"current_now", "-830000"}});
  Supply expected;
  expected.name = "BAT0";
  expected.type = SupplyType::battery;
  expected.scope = SupplyScope::system;
  expected.status = SupplyStatus::notCharging;
  expected.present = true;
  expected.capacity = 100;
  expected.chargeEndPercent = 80;
  expected.chargeNow = 0;
  expected.chargeFull = 4'000'000;
  expected.chargeFullDesign = 5'000'000;
  expected.voltageMinDesign = 11'100'000;
  expected.voltageMaxDesign = 12'600'000;
  expected.voltageNow = 11'400'000;
  expected.powerNow = 9'500'000;
  expected.currentNow = 830'000;
  EXPECT_EQ(SupplyReader(tree.path()).read(SupplyFields::all), std::vector{expected});
}

// What a property of the registry asks for is enough for it, and no more than that is read.
TEST(SysfsSupply, CapacitiesNeedFewFigures) {
  const SupplyTree::Attributes common{{"type", "Battery"},
                                      {"status", "Charging"},
                                      {"capacity", "50"},
                                      {"voltage_now", "11400000"},
                                      {"voltage_max_design", "12600000"}};
  const SupplyTree::Attributes energy{{"energy_full", "57000000"},
                                      {"energy_full_design", "60000000"},
                                      {"energy_now", "28000000"},
                                      {"power_now", "9500000"}};
  const SupplyTree::Attributes charge{{"charge_full", "4000000"},
                                      {"charge_full_design", "5000000"}};
  const SupplyTree::Attributes nominal{{"voltage_min_design", "11100000"}};
  const struct {
    const char* battery;
    std::vector<SupplyTree::Attributes> attributes;
    std::vector<const char*> without;
  } rows[] = {
      {"counts energy", {energy, nominal}, {}},
      {"counts energy, one voltage", {energy}, {}},
      {"counts energy, the present voltage", {energy}, {"voltage_max_design"}},
      {"counts energy, no voltage", {energy}, {"voltage_max_design", "voltage_now"}},
      {"counts charge", {charge, nominal}, {}},
      {"counts both", {energy, charge, nominal}, {}},
      {"half of each", {energy, charge, nominal}, {"charge_full_design"}},
      {"the other half", {energy, charge, nominal}, {"charge_full", "energy_full_design"}},
      {"neither", {nominal}, {}},
  };
  for (const auto& row : rows) {
    const SupplyTree tree;
    tree.set("BAT0", common);
    for (const auto& each : row.attributes) tree.set("BAT0", each);
    for (const char* each : row.without) std::filesystem::remove(tree.file("BAT0", each));
    const auto some = SupplyReader(tree.path()).read(SupplyFields::capacities);
    const auto all = SupplyReader(tree.path()).read(SupplyFields::all);
    for (const char* name : {"MaxCapacity", "DesignCapacity"}) {
      EXPECT_EQ(fieldsNeededFor(name, all), SupplyFields::capacities);
      EXPECT_EQ(registryProperty(some, name), registryProperty(all, name)) << row.battery;
    }
    EXPECT_EQ(some.at(0).status, SupplyStatus::charging);
    EXPECT_EQ(some.at(0).capacity, std::nullopt) << row.battery;
    EXPECT_EQ(some.at(0).energyNow, std::nullopt) << row.battery;
    EXPECT_EQ(fieldsNeededFor("TimeRemaining", some), SupplyFields::all);
    EXPECT_EQ(fieldsNeededFor("IsCharging", some), SupplyFields::state);
  }
}

TEST(SysfsSupply, ForeignTextThatIsNoFigureIsAbsent) {
  const std::string bad[] = {"",
                             "abc",
                             "5x",
                             "0x10",
                             "1e3",
                             "5.5",
                             "-5",
                             "255",
                             "+5",
                             "1 2",
                             "\xff\xfe",
                             std::string("5\0", 2),
                             "5" + std::string(5000, ' '),
                             "99999999999999999999999"};
  for (const std::string& text : bad) {
    EXPECT_EQ(parseSupplyPercent(text.size() > 4096 ? "x" : text), std::nullopt) << text;
    const SupplyTree tree;
    tree.set("BAT0", {{"type", "Battery"}, {"capacity", text}, {"voltage_now", "0"}});
    const auto supplies = SupplyReader(tree.path()).read(SupplyFields::all);
    EXPECT_EQ(named(supplies, "BAT0").capacity, std::nullopt) << text;
    EXPECT_EQ(named(supplies, "BAT0").voltageNow, std::nullopt);
  }
  EXPECT_EQ(parseSupplyPercent(" 5\n"), 5);
  EXPECT_EQ(parseSupplyPercent("0"), 0);
  EXPECT_EQ(parseSupplyStatus("charging"), std::nullopt);
}

TEST(SysfsSupply, NothingInTheTreeHangsOrEndsAReading) {
  const SupplyTree tree;
  tree.set("BAT0", {{"type", "Battery"}, {"status", "Full"}});
  const std::string fifo = tree.file("BAT0", "capacity");
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  const int writer = open(fifo.c_str(), O_RDWR | O_NONBLOCK);
  ASSERT_EQ(write(writer, "57\n", 3), 3);  // it would even look like a percentage
  std::filesystem::create_directory(tree.file("BAT0", "energy_now"));
  std::filesystem::create_symlink("/dev/zero", tree.file("BAT0", "energy_full"));
  std::filesystem::create_symlink("nowhere", tree.file("BAT0", "power_now"));
  tree.set("BAT0", {{"charge_full", "1"}});
  std::filesystem::resize_file(tree.file("BAT0", "charge_full"), std::uintmax_t{1} << 40);
  std::filesystem::create_symlink(tree.path(), tree.file("BAT0", "loop"));
  std::filesystem::create_symlink("nowhere", tree.path() + "/BAT1");
  ASSERT_EQ(mkfifo((tree.path() + "/BAT2").c_str(), 0600), 0);

  const auto supplies = SupplyReader(tree.path()).read(SupplyFields::all);
  Supply expected;
  expected.name = "BAT0";
  expected.type = SupplyType::battery;
  expected.status = SupplyStatus::full;
  EXPECT_EQ(supplies, std::vector{expected});
  close(writer);
  EXPECT_TRUE(SupplyReader(tree.path() + "/none").read(SupplyFields::all).empty());
  EXPECT_TRUE(SupplyReader(tree.file("BAT0", "status")).read(SupplyFields::all).empty());
}

TEST(SysfsSupply, KindsOfSupply) {
  const struct {
    const char* text;
    std::optional<SupplyType> type;
  } rows[] = {{"Battery\n", SupplyType::battery}, {"UPS\n", SupplyType::ups},
              {"Mains\n", SupplyType::external},  {"USB\n", SupplyType::external},
              {"USB_PD\n", SupplyType::external}, {"BrickID", SupplyType::external},
              {"Wireless", SupplyType::external}, {"Unknown", std::nullopt},
              {"USBStick", std::nullopt},         {"", std::nullopt}};
  for (const auto& row : rows) EXPECT_EQ(parseSupplyType(row.text), row.type) << row.text;
}

// A handle is taken once, for the life of the program.
TEST(SysfsDeviceRegistry, AHandleOutlivesTheHardware) {
  const SupplyTree tree;
  SysfsDeviceRegistry registry(tree.path());
  EXPECT_EQ(registry.findService("AppleSmartBattery"), 0u);
  tree.set("hidpp_battery_0", {{"type", "Battery"}, {"scope", "Device"}, {"status", "Charging"}});
  EXPECT_EQ(registry.findService("AppleSmartBattery"), 0u);
  EXPECT_EQ(registry.property(0, "IsCharging"), std::nullopt);

  tree.setLaptop();
  const ServiceHandle battery = registry.findService("AppleSmartBattery");
  ASSERT_NE(battery, 0u);
  EXPECT_EQ(registry.findService("AppleBacklight"), 0u);
  EXPECT_EQ(registry.property(battery, "ExternalConnected"), PropertyValue(false));
  EXPECT_EQ(registry.property(battery, "MaxCapacity"), PropertyValue(5000));
  EXPECT_EQ(registry.property(battery, "CycleCount"), std::nullopt);
  EXPECT_EQ(registry.property(0, "MaxCapacity"), std::nullopt);

  tree.remove("BAT0");
  EXPECT_EQ(registry.property(battery, "ExternalConnected"), std::nullopt);
  EXPECT_EQ(registry.property(battery, "MaxCapacity"), std::nullopt);
  tree.setLaptop();
  EXPECT_EQ(registry.property(battery, "MaxCapacity"), PropertyValue(5000));
  registry.release(battery);
}

}  // namespace
}  // namespace kelvane
