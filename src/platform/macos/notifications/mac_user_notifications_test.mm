#include "platform/macos/notifications/mac_user_notifications.h"

#include <doubles/doubles.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvane {
namespace {

using ::testing::ElementsAre;

TEST(MacUserNotifications, PostsAtOnceRemovesAllAndAsksForSilence) {
  MacUserNotifications notifications;
  notifications.requestAuthorization();
  notifications.removeAllDelivered();
  for (const char* body : {"body", ""}) {
    notifications.post({.identifier = "batteryPercentage", .title = "57%", .body = body});
    UNNotificationRequest* posted = doubles::services().posted;
    EXPECT_STREQ(posted.identifier.UTF8String, "batteryPercentage");
    EXPECT_STREQ(posted.content.title.UTF8String, "57%");
    EXPECT_STREQ(posted.content.body.UTF8String, *body ? body : nullptr);
  }
  EXPECT_THAT(doubles::services().log,
              ElementsAre("authorization 0", "remove all", "request", "request"));
}

TEST(MacUserNotifications, OutsideABundleNothingHappens) {
  doubles::services().isInBundle = false;
  MacUserNotifications notifications;
  notifications.requestAuthorization();
  notifications.removeAllDelivered();
  notifications.post({.identifier = "a", .title = "b"});
  EXPECT_EQ(doubles::services().posted, nil);
  EXPECT_THAT(doubles::services().log, ElementsAre("request")) << "made, and given to nobody";
}

}  // namespace
}  // namespace kelvane
