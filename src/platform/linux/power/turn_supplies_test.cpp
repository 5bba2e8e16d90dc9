#include "platform/linux/power/turn_supplies.h"

#include <functional>
#include <optional>

#include <glib.h>
#include <gtest/gtest.h>

#include "platform/linux/power/supply_tree_test.h"

namespace kelvane {
namespace {

void inATurn(std::function<void()> job) {
  g_idle_add_once([](gpointer run) { (*static_cast<std::function<void()>*>(run))(); }, &job);
  while (g_main_context_iteration(nullptr, FALSE)) continue;
}

class TurnSuppliesTest : public ::testing::Test {
 protected:
  TurnSuppliesTest() { tree.setLaptop(); }
  void setOnline(const char* online) const { tree.set("AC", {{"online", online}}); }
  static std::optional<bool> online(const std::vector<Supply>& supplies) {
    return supplies.at(0).online;
  }

  const SupplyTree tree;
  TurnSupplies supplies{tree.path()};
};

TEST_F(TurnSuppliesTest, ATurnIsOneReadingUnlessItNeedsMore) {
  inATurn([&] {
    EXPECT_EQ(online(supplies.read(SupplyFields::state)), false);
    setOnline("1");
    EXPECT_EQ(online(supplies.read(SupplyFields::state)), false);
    EXPECT_EQ(supplies.read(SupplyFields::state).at(1).capacity, std::nullopt);
    EXPECT_EQ(supplies.read(SupplyFields::all).at(1).capacity, 57);
    tree.set("BAT0", {{"capacity", "56"}});
    EXPECT_EQ(supplies.read(SupplyFields::all).at(1).capacity, 57);
    EXPECT_EQ(online(supplies.read(SupplyFields::state)), false);
    EXPECT_EQ(online(supplies.readAfresh()), true);
    setOnline("0");
    EXPECT_EQ(supplies.read(SupplyFields::state).at(1).capacity, 56);
    EXPECT_EQ(online(supplies.read(SupplyFields::state)), true);
    supplies.forget();
    EXPECT_EQ(online(supplies.read(SupplyFields::state)), false);
    setOnline("1");
  });
  inATurn([&] { EXPECT_EQ(online(supplies.read(SupplyFields::state)), true); });
}

TEST_F(TurnSuppliesTest, OutsideTheMainLoopEachCallReads) {
  EXPECT_EQ(online(supplies.read(SupplyFields::state)), false);
  setOnline("1");
  EXPECT_EQ(online(supplies.read(SupplyFields::state)), true);
  EXPECT_EQ(supplies.read(SupplyFields::all), SupplyReader(tree.path()).read(SupplyFields::all));
}

}  // namespace
}  // namespace kelvane
