#include "app/welcome.h"

#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_computer.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class WelcomeTest : public ::testing::Test {
 protected:
  void greet(bool isFirstLaunch = true) {
    item = computer.statusBar.makeItem(22);
    welcome = std::make_unique<Welcome>(computer.platform(), "Kelvane", isFirstLaunch);
    welcome->showWelcome(*item);
  }
  void dismissAlert() {
    computer.windows.pressButton(0);
    computer.runLoop.run();
  }
  bool isPopoverOpen() {
    return !computer.windows.popovers.empty() && computer.windows.popovers.back()->isOpen;
  }
  const std::vector<std::string>& itemCalls() { return computer.statusBar.item()->calls; }

  MemoryComputer computer;
  std::unique_ptr<StatusItem> item;
  std::unique_ptr<Welcome> welcome;
};

TEST_F(WelcomeTest, AlertFirstThenThePopoverForFiveSeconds) {
  greet();
  EXPECT_EQ(computer.windows.activations, 1);
  ASSERT_EQ(computer.windows.alerts.size(), 1U);
  const Alert& alert = computer.windows.alerts[0];
  EXPECT_EQ(alert.title, "Welcome to Kelvane!");
  EXPECT_TRUE(alert.message.starts_with("If you have any feedback"));
  EXPECT_TRUE(alert.buttons.empty());
  EXPECT_EQ(alert.minimumWidth, 370);
  computer.runLoop.advance(60);
  EXPECT_THAT(computer.windows.popovers, IsEmpty());

  dismissAlert();
  computer.runLoop.advance(0.09);
  EXPECT_THAT(computer.windows.popovers, IsEmpty());
  EXPECT_THAT(itemCalls(), IsEmpty());
  computer.runLoop.advance(0.01);
  ASSERT_TRUE(isPopoverOpen());
  const PopoverContent& content = computer.windows.popovers[0]->content;
  EXPECT_EQ(content.identifier, "statusBarButtonWelcomePopover");
  EXPECT_EQ(content.text, "Hello, I'm Kelvane");
  EXPECT_EQ(content.maximumTextWidth, 1000);
  EXPECT_EQ(content.inset, 15);
  EXPECT_TRUE(content.isAnimated);
  EXPECT_FALSE(content.showsWithoutItem);
  EXPECT_THAT(itemCalls(), ElementsAre("shake in 0.3: -2 2 -1 1 0"));

  computer.runLoop.advance(4.9);
  EXPECT_TRUE(isPopoverOpen());
  computer.runLoop.advance(0.1);
  EXPECT_FALSE(isPopoverOpen());
}

TEST_F(WelcomeTest, ClosesOnceWhoeverIsFirst) {
  const auto click = [this] { computer.statusBar.item()->clickObservers.notify(); };
  const auto closedByPlatform = [this] {
    computer.windows.popovers.back()->isOpen = false;
    computer.windows.popovers.back()->closed();
  };
  for (const std::function<void()>& close : {std::function<void()>(click), {closedByPlatform}}) {
    greet();
    dismissAlert();
    computer.runLoop.advance(1);
    ASSERT_TRUE(isPopoverOpen());
    close();
    EXPECT_FALSE(isPopoverOpen());
    EXPECT_EQ(computer.runLoop.nextDeadline(), std::nullopt);  // the timer has gone with it
    click();
    closedByPlatform();
  }
}

TEST_F(WelcomeTest, NothingOnLaterLaunchesAndNoMotionWhereItIsReduced) {
  greet(false);
  EXPECT_THAT(computer.windows.alerts, IsEmpty());
  EXPECT_EQ(computer.windows.activations, 0);

  computer.systemInfo.reducedMotion = true;
  greet();
  dismissAlert();
  computer.runLoop.advance(1);
  EXPECT_FALSE(computer.windows.popovers.back()->content.isAnimated);
  EXPECT_THAT(itemCalls(), IsEmpty());
}

TEST_F(WelcomeTest, WithoutAPopoverOrAnEndInBetweenThereIsOnlyTheAlert) {
  computer.windows.canShowPopovers = false;
  greet();
  dismissAlert();
  computer.runLoop.advance(1);
  EXPECT_EQ(computer.runLoop.nextDeadline(), std::nullopt);

  computer.windows.canShowPopovers = true;
  greet();
  dismissAlert();
  welcome.reset();
  computer.runLoop.advance(1);
  EXPECT_THAT(computer.windows.popovers, IsEmpty());
}

}  // namespace
}  // namespace kelvane
