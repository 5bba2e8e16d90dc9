#include "platform/macos/status_bar/hover_view.h"

#include <string>
#include <utility>
#include <vector>

#include <doubles/doubles.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/status_bar/mac_status_bar.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class HoverViewTest : public ::testing::Test {
 protected:
  void SetUp() override {
    NSApplication.sharedApplication.appearance =
        [NSAppearance appearanceNamed:NSAppearanceNameDarkAqua];
    [button() kelvanePutIntoWindow:window_];
    item->addHoverView({.setHovered = [this](bool is) { seen.push_back(is ? "on" : "off"); },
                        .text = [this] { return text; },
                        .horizontalPadding = 14,
                        .verticalPadding = 10});
  }
  NSStatusBarButton* button() { return doubles::statusBar().items.at(0).button; }
  NSView* view() { return button().subviews.lastObject; }
  NSPopover* popover() { return doubles::application().popover; }
  void enter() { [view() mouseEntered:[[NSEvent alloc] init]]; }
  void leave() { [view() mouseExited:[[NSEvent alloc] init]]; }
  std::vector<std::string> take() { return std::exchange(seen, {}); }

  std::string text = "2:05";
  std::vector<std::string> seen;
  NSWindow* window_ = [[NSWindow alloc] init];
  MacStatusBar bar;
  std::unique_ptr<StatusItem> item = bar.makeItem(20);
};

TEST_F(HoverViewTest, LiesOverTheButtonAndLetsClicksThrough) {
  EXPECT_EQ(view().superview, button());
  EXPECT_EQ([view() hitTest:NSMakePoint(0, 0)], nil);
  EXPECT_TRUE([view().subviews.lastObject allowsVibrancy]);
  item->addHoverView({});
  EXPECT_EQ(button().subviews.count, 2U) << "a second one comes on top";
}

TEST_F(HoverViewTest, TracksThePointerOverItsPresentBounds) {
  for (const double width : {20.0, 48.0}) {
    view().bounds = NSMakeRect(0, 0, width, 22);
    [view() updateTrackingAreas];
    ASSERT_EQ(view().kelvaneTrackingAreas.count, 1U);
    NSTrackingArea* area = view().kelvaneTrackingAreas.firstObject;
    EXPECT_EQ(area.kelvaneRect.size.width, width);
    EXPECT_EQ(area.kelvaneOptions, 0x81U);
    EXPECT_EQ(area.kelvaneOwner, view());
  }
}

TEST_F(HoverViewTest, ShowsTheTextWhileThePointerRests) {
  enter();
  enter();
  EXPECT_THAT(take(), ElementsAre("on"));
  EXPECT_EQ(view().appearance, NSApp.effectiveAppearance);
  ASSERT_NE(popover(), nil);
  EXPECT_EQ(popover().kelvaneEdge, NSRectEdgeMinY);
  NSTextField* label = popover().contentViewController.view.subviews.lastObject;
  EXPECT_STREQ(label.stringValue.UTF8String, "2:05");
  leave();
  EXPECT_THAT(take(), ElementsAre("off"));
  EXPECT_FALSE(popover().shown);
  doubles::runFor(1);
  EXPECT_EQ(popover(), nil);
  EXPECT_THAT(take(), IsEmpty());
  text = "57";
  enter();
  label = popover().contentViewController.view.subviews.lastObject;
  EXPECT_STREQ(label.stringValue.UTF8String, "57") << "read anew";
}

TEST_F(HoverViewTest, ClosingThePopoverEndsTheHover) {
  enter();
  [popover() close];
  doubles::runFor(1);
  EXPECT_THAT(take(), ElementsAre("on", "off"));
  leave();
  EXPECT_THAT(take(), IsEmpty());
}

TEST_F(HoverViewTest, ComingBackWhileThePopoverFadesShowsAnother) {
  enter();
  leave();
  enter();
  doubles::runFor(1);
  EXPECT_THAT(take(), ElementsAre("on", "off", "on"));
  ASSERT_NE(popover(), nil);
  EXPECT_TRUE(popover().shown);
}

TEST_F(HoverViewTest, GoesSilentlyWithTheItem) {
  enter();
  NSPopover* shown = popover();
  NSView* kept = view();
  take();
  item.reset();
  EXPECT_FALSE(shown.shown);
  doubles::runFor(1);
  [kept mouseExited:[[NSEvent alloc] init]];
  EXPECT_THAT(take(), IsEmpty());
  EXPECT_EQ(kept.superview, nil);
}

TEST_F(HoverViewTest, AnItemInNoWindowShowsNothing) {
  [button() kelvanePutIntoWindow:nil];
  enter();
  EXPECT_EQ(popover(), nil);
  EXPECT_THAT(take(), ElementsAre("on"));
}

}  // namespace
}  // namespace kelvane
