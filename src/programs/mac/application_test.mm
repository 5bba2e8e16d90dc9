// The application on the Mac's adaptors, but for drawing and facts about the system.
#include <memory>
#include <string>
#include <vector>

#include <doubles/doubles.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "app/app_main.h"
#include "platform/macos/login/mac_login_items.h"
#include "platform/macos/notifications/mac_user_notifications.h"
#include "platform/macos/power/iokit_registry.h"
#include "platform/macos/power/iops_power_sources.h"
#include "platform/macos/preferences/mac_preferences.h"
#include "platform/macos/run_loop/mac_run_loop.h"
#include "platform/macos/status_bar/mac_status_bar.h"
#include "platform/macos/status_bar/mac_status_item.h"
#include "platform/macos/windows/mac_windows.h"
#include "platform/memory/memory_computer.h"

namespace kelvane {
namespace {

using ::testing::Contains;

class MacApplicationTest : public ::testing::Test {
 protected:
  Platform platform() {
    return {registry,   powerSources,   preferences,     runLoop,
            statusBar,  rest.graphics,  notifications,   windows,
            loginItems, rest.workspace, rest.systemInfo, rest.textFormats};
  }
  void start(bool isFirstLaunch = false) {
    (void)NSApplication.sharedApplication;
    set(57, false);
    if (!isFirstLaunch) preferences.setObject("__hasLaunched__", true);
    application = std::make_unique<AppMain>(
        platform(), ApplicationInformation{.name = "Kelvane", .identifier = "org.kelvane.Kelvane"});
    application->appState();
    if (!isFirstLaunch) doubles::runFor(0.5);
  }
  void set(int percent, bool isOnPower) {
    doubles::power().sources = @{
      @"battery" : @{
        @"Type" : @"InternalBattery",
        @"Is Present" : @YES,
        @"Current Capacity" : @(percent),
        @"Max Capacity" : @100,
        @"BatteryHealth" : @"Good"
      }
    };
    doubles::power().battery = @{@"ExternalConnected" : @(BOOL(isOnPower)), @"IsCharging" : @NO};
    doubles::power().timeRemaining = isOnPower ? -2 : 7500;
  }
  void change(int percent, bool isOnPower) {
    set(percent, isOnPower);
    doubles::powerChanged();
    doubles::runFor(0.5);
  }
  NSStatusItem* item() { return doubles::statusBar().items.at(0); }
  NSMenuItem* line(const char* title) {
    doubles::openMenu(item().menu);
    for (NSMenuItem* each in item().menu.itemArray)
      if (std::string(each.title.UTF8String) == title) return each;
    return nil;
  }

  MacRunLoop runLoop;
  MacPreferences preferences;
  IokitRegistry registry;
  IopsPowerSources powerSources;
  MacStatusBar statusBar;
  MacUserNotifications notifications;
  MacWindows windows{[this]() -> void* {
    return statusBar.item() ? (__bridge void*)statusBar.item()->button() : nullptr;
  }};
  MacLoginItems loginItems;
  MemoryComputer rest;
  std::unique_ptr<AppMain> application;
};

TEST_F(MacApplicationTest, TheItemFollowsTheBatteryAndTheSettings) {
  start();
  EXPECT_TRUE(item().visible);
  EXPECT_EQ(item().behavior, 6U);
  EXPECT_GT(item().length, 0);
  NSImage* first = item().button.image;
  ASSERT_NE(first, nil);
  EXPECT_TRUE([first isTemplate]);
  change(56, false);
  EXPECT_NE(item().button.image, first);
  application->settings().textOnlyIcon.set(true);
  doubles::runFor(0.5);
  EXPECT_EQ(item().button.image, nil);
  EXPECT_STREQ(item().button.attributedTitle.string.UTF8String, "56\xEF\xB9\xAA");
  doubles::changePreferenceElsewhere(@"textOnlyIcon", @NO);
  doubles::runFor(0.5);
  EXPECT_NE(item().button.image, nil) << "changed by another process";
  application->settings().hideIconWhenOnPower.set(true);
  change(56, true);
  EXPECT_FALSE(item().visible);
  EXPECT_THAT(doubles::services().log, Contains("remove all"));
}

TEST_F(MacApplicationTest, TheMenuOpensTheSettings) {
  start();
  NSMenuItem* settings = line("Preferences\xE2\x80\xA6");
  ASSERT_NE(settings, nil);
  doubles::choose(settings);
  doubles::runFor(0.5);
  NSWindow* window = doubles::application().front;
  ASSERT_NE(window, nil);
  EXPECT_TRUE(window.visible);
  doubles::choose(settings);
  doubles::runFor(0.5);
  EXPECT_EQ(doubles::application().front, window);
  [window close];
  doubles::runFor(0.5);
  EXPECT_FALSE(window.visible);
}

TEST_F(MacApplicationTest, TheLowBatteryAlertGoesWhenPowerReturns) {
  start();
  set(3, false);
  doubles::power().warningLevel = 3;
  doubles::powerChanged();
  doubles::afterwards(1, [this] {
    EXPECT_NE(doubles::application().alert, nil);
    set(3, true);
    doubles::powerChanged();
  });
  doubles::runFor(3);
  EXPECT_EQ(doubles::application().alert, nil);
  EXPECT_EQ(doubles::application().activations, 1);
}

TEST_F(MacApplicationTest, TheFirstLaunchGreets) {
  start(true);
  NSWindow* bar = [[NSWindow alloc] init];
  bar.screen = [[NSScreen alloc] init];
  std::string alert, greeting;
  doubles::afterwards(1, [&] {
    alert = doubles::application().alert.messageText.UTF8String;
    [item().button kelvanePutIntoWindow:bar];
    doubles::press(0);
  });
  doubles::afterwards(2, [&] {
    NSView* content = doubles::application().popover.contentViewController.view;
    greeting = ((NSTextField*)content.subviews.firstObject).stringValue.UTF8String;
  });
  doubles::runFor(10);
  EXPECT_EQ(alert, "Welcome to Kelvane!");
  EXPECT_EQ(greeting, "Hello, I'm Kelvane");
  EXPECT_EQ(doubles::application().popover, nil) << "it closes by itself";
  EXPECT_EQ(item().button.kelvaneRecognizers.count, 0U);
}

TEST_F(MacApplicationTest, WithoutABatteryItSaysSoAndQuits) {
  doubles::afterwards(1, [] {
    EXPECT_EQ(doubles::application().alert.buttons.count, 1U);
    doubles::press(0);
  });
  (void)NSApplication.sharedApplication;
  set(57, false);
  doubles::power().sources = nil;
  application = std::make_unique<AppMain>(
      platform(), ApplicationInformation{.name = "Kelvane", .identifier = "k"});
  application->appState();
  EXPECT_EQ(runLoop.run(), 1);
}

}  // namespace
}  // namespace kelvane
