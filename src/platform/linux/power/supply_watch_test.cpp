#include "platform/linux/power/supply_watch.h"

#include <memory>

#include <gtest/gtest.h>

#include "platform/linux/power/supply_tree_test.h"
#include "platform/memory/memory_run_loop.h"

namespace kelvane {
namespace {

TEST(SupplyWatch, LooksEveryHalfMinuteForDriversThatSayNothing) {
  MemoryRunLoop loop;
  const SupplyTree tree;
  int looks = 0;
  auto watch = std::make_unique<SupplyWatch>(loop, tree.path(), [&] { ++looks; });
  loop.advance(29.9);
  EXPECT_EQ(looks, 0);
  loop.advance(0.2);
  EXPECT_EQ(looks, 1);
  loop.advance(60);
  EXPECT_EQ(looks, 3);
  watch.reset();
  loop.advance(60);
  EXPECT_EQ(looks, 3);
}

}  // namespace
}  // namespace kelvane
