#include "platform/macos/windows/item_popover.h"

#include <doubles/doubles.h>
#include <gtest/gtest.h>

namespace kelvane {
namespace {

class ItemPopoverTest : public ::testing::Test {
 protected:
  std::unique_ptr<PopoverHandle> show(PopoverContent content = {}) {
    content.text = "Welcome";
    content.maximumTextWidth = 200;
    return showItemPopover(item, content, [this] { ++closed; });
  }
  NSPopover* popover() { return doubles::application().popover; }

  NSView* item = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, 20, 22)];
  int closed = 0;
};

TEST_F(ItemPopoverTest, NeedsAnItemOnAScreenUnlessItIsToldOtherwise) {
  EXPECT_EQ(show(), nullptr);
  EXPECT_NE(show({.showsWithoutItem = true}), nullptr);
  EXPECT_NE(show({.isAnimated = false, .showsWithoutItem = true}), nullptr);
  NSWindow* window = [[NSWindow alloc] init];
  [item kelvanePutIntoWindow:window];
  EXPECT_EQ(show(), nullptr) << "in a window on no screen";
  window.screen = [[NSScreen alloc] init];
  EXPECT_NE(show(), nullptr);
  item = nil;
  EXPECT_EQ(show({.showsWithoutItem = true}), nullptr);
  doubles::runFor(1);
  EXPECT_EQ(closed, 0) << "the handles went first";
}

TEST_F(ItemPopoverTest, TellsOnceThatItClosedAndTakesItsAnchorAway) {
  const auto handle = show({.isAnimated = false, .showsWithoutItem = true});
  NSPopover* shown = popover();
  NSTextField* label = shown.contentViewController.view.subviews.lastObject;
  EXPECT_STREQ(label.stringValue.UTF8String, "Welcome");
  EXPECT_EQ(label.preferredMaxLayoutWidth, 200);
  EXPECT_FALSE(shown.animates);
  EXPECT_EQ(shown.behavior, NSPopoverBehaviorSemitransient);
  NSWindow* anchor = shown.kelvaneView.window;
  EXPECT_TRUE(anchor.visible);
  handle->close();
  handle->close();
  doubles::runFor(1);
  EXPECT_EQ(closed, 1);
  EXPECT_FALSE(anchor.visible);
}

TEST_F(ItemPopoverTest, ItsAnchorFollowsTheItemUntilItHasClosed) {
  NSWindow* window = [[NSWindow alloc] init];
  window.screen = [[NSScreen alloc] init];
  [item kelvanePutIntoWindow:window];
  auto handle = show();
  NSWindow* anchor = popover().kelvaneView.window;
  EXPECT_EQ(anchor.frame.origin.x, 0);
  EXPECT_EQ(anchor.frame.size.height, 1);
  item.bounds = NSMakeRect(100, 0, 40, 22);
  doubles::post(NSWindowDidMoveNotification);
  EXPECT_EQ(anchor.frame.origin.x, 110);
  item.bounds = NSMakeRect(100, 0, 60, 22);
  doubles::post(NSWindowDidResizeNotification);
  EXPECT_EQ(anchor.frame.origin.x, 120);
  handle.reset();
  EXPECT_TRUE(anchor.visible) << "while it fades";
  doubles::runFor(1);
  EXPECT_FALSE(anchor.visible);
  EXPECT_EQ(closed, 0);
}

TEST_F(ItemPopoverTest, TheCallbackMayDestroyItsOwnHandle) {
  std::unique_ptr<PopoverHandle> handle;
  handle = showItemPopover(item, {.showsWithoutItem = true},
                           [this, &handle, own = std::make_shared<int>(1)] {
                             handle.reset();
                             closed += *own;
                           });
  [popover() close];
  doubles::runFor(1);
  EXPECT_EQ(closed, 1);
}

}  // namespace
}  // namespace kelvane
