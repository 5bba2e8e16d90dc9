#include "platform/linux/power/supply_reader.h"

#include <filesystem>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "platform/linux/power/supply_tree_test.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;

// In sysfs an entry is a link to the folder of a device.
class SupplyReaderTest : public ::testing::Test {
 protected:
  SupplyReaderTest() {
    setDevice("battery", {{"type", "Battery"}, {"status", "Discharging"}, {"capacity", "57"}});
    fs::create_directory(directory());
    link("BAT0", "battery");
  }
  fs::path directory() const { return fs::path(root.path()) / "class"; }
  fs::path device(const std::string& name) const { return fs::path(root.path()) / name; }
  void setDevice(const std::string& name, const SupplyTree::Attributes& attributes) const {
    root.set(name, attributes);
  }
  void link(const std::string& name, const std::string& target) const {
    fs::create_directory_symlink(device(target), directory() / name);
  }

  const SupplyTree root;
  SupplyReader reader{directory()};
};

// What is held open of a tree must never hide what has become of it.
TEST_F(SupplyReaderTest, FollowsWhatBecomesOfATree) {
  const SupplyTree::Attributes charger{{"type", "Mains"}, {"online", "1"}};
  const struct {
    const char* change;
    std::function<void()> make;
    std::string seen;
  } rows[] = {
      {"none", [] {}, "BAT0 battery 57"},
      {"a figure",
       [&] {
         setDevice("battery", {{"capacity", "56"}});
       },
       "BAT0 battery 56"},
      {"a file in place of another",
       [&] {
         setDevice("new", {{"capacity", "55"}});
         fs::rename(device("new") / "capacity", device("battery") / "capacity");
       },
       "BAT0 battery 55"},
      {"one more",
       [&] {
         setDevice("charger", charger);
         link("AC", "charger");
       },
       "AC external, BAT0 battery 55"},
      {"its device lost", [&] { fs::remove_all(device("battery")); }, "AC external"},
      {"another device behind the same entry",
       [&] {
         setDevice("battery", {{"type", "UPS"}, {"status", "Full"}, {"capacity", "90"}});
       },
       "AC external, BAT0 ups 90"},
      {"another device in its place within one moment",
       [&] {
         fs::remove_all(device("battery"));
         setDevice("battery", {{"type", "Battery"}, {"status", "Full"}, {"capacity", "99"}});
       },
       "AC external, BAT0 battery 99"},
      {"another entry of its name",
       [&] {
         fs::rename(directory() / "BAT0", directory() / "BAT1");
         link("BAT0", "charger");
       },
       "AC external, BAT0 external, BAT1 battery 99"},
      {"all entries gone",
       [&] {
         fs::remove_all(directory());
         fs::create_directory(directory());
       },
       ""},
      {"an entry in the new tree", [&] { link("BAT0", "battery"); }, "BAT0 battery 99"},
      {"no tree", [&] { fs::remove_all(directory()); }, ""},
      {"another tree",
       [&] {
         fs::create_directory(directory());
         link("AC", "charger");
       },
       "AC external"},
  };
  for (const auto& row : rows) {
    row.make();
    std::string seen;
    for (const Supply& each : reader.read(SupplyFields::all)) {
      seen += (seen.empty() ? "" : ", ") + each.name;
      seen += each.type == SupplyType::battery ? " battery"
              : each.type == SupplyType::ups   ? " ups"
                                               : " external";
      if (each.capacity) seen += " " + std::to_string(*each.capacity);
    }
    EXPECT_EQ(seen, row.seen) << row.change;
  }
}

// A driver that is slow to say what it is.
TEST_F(SupplyReaderTest, AKindIsReadUntilItIsKnown) {
  setDevice("late", {{"online", "1"}});
  link("AC", "late");
  EXPECT_EQ(reader.read(SupplyFields::state).at(0).online, std::nullopt);
  setDevice("late", {{"type", "Mains"}});
  EXPECT_EQ(reader.read(SupplyFields::state).at(0).online, true);
}

TEST_F(SupplyReaderTest, FiguresAreAddedToTheSupplyTheyAreOf) {
  setDevice("second", {{"type", "Battery"}, {"status", "Full"}, {"capacity", "80"}});
  link("BAT1", "second");
  auto supplies = reader.read(SupplyFields::state);
  fs::remove_all(device("battery"));
  reader.addFigures(supplies, SupplyFields::all);
  EXPECT_EQ(supplies.at(0).capacity, std::nullopt);
  EXPECT_EQ(supplies.at(0).status, SupplyStatus::discharging);
  EXPECT_EQ(supplies.at(1).capacity, 80);
}

}  // namespace
}  // namespace kelvane
