#include "platform/portable/item_popover.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/portable/shake_times.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(ItemPopover, IsShownAtTheItemsLowerEdge) {
  EXPECT_EQ(anchorFrame({.x = 1000, .y = 878, .width = 44, .height = 22}),
            (Rect{.x = 1012, .y = 878, .width = 20, .height = 1}));
  // Narrower than the window that stands for it.
  EXPECT_EQ(anchorFrame({.x = -100, .y = 0, .width = 10, .height = 24}),
            (Rect{.x = -105, .y = 0, .width = 20, .height = 1}));
  for (const bool isOnScreen : {false, true})
    for (const bool showsWithoutItem : {false, true})
      EXPECT_EQ(isPopoverShown({.showsWithoutItem = showsWithoutItem}, isOnScreen),
                isOnScreen || showsWithoutItem);
}

TEST(HoverRest, TellsOfEachChangeOnce) {
  std::vector<bool> told;
  std::string text = "2:05";
  HoverRest rest({.setHovered = [&](bool isHovered) { told.push_back(isHovered); },
                  .text = [&] { return text; },
                  .horizontalPadding = 14,
                  .verticalPadding = 10});
  EXPECT_FALSE(rest.setHovered(false));
  EXPECT_TRUE(rest.setHovered(true));
  EXPECT_FALSE(rest.setHovered(true));
  text = "57﹪";
  EXPECT_EQ(rest.text(), "57﹪") << "read afresh";
  EXPECT_TRUE(rest.setHovered(false));
  EXPECT_FALSE(rest.setHovered(false)) << "the popover has closed, after the pointer had left";
  EXPECT_THAT(told, ElementsAre(true, false));
  rest.detach();
  EXPECT_TRUE(rest.setHovered(true));
  EXPECT_EQ(rest.text(), "");
  EXPECT_EQ(told.size(), 2U);
}

TEST(ShakeTimes, AreEvenlySpacedFromTheFirstOffsetToTheLast) {
  EXPECT_THAT(shakeTimes(5), ElementsAre(0, 0.25, 0.5, 0.75, 1));
  EXPECT_THAT(shakeTimes(2), ElementsAre(0, 1));
  EXPECT_THAT(shakeTimes(1), IsEmpty());
  EXPECT_THAT(shakeTimes(0), IsEmpty());
}

}  // namespace
}  // namespace kelvane
