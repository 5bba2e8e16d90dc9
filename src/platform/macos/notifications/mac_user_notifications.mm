#include "platform/macos/notifications/mac_user_notifications.h"

#import <UserNotifications/UserNotifications.h>

#include "platform/macos/foundation/strings.h"

namespace kelvane {
namespace {

// Nil in a process that is in no application bundle, where asking for it throws.
UNUserNotificationCenter* currentCentre() {
  @try {
    return UNUserNotificationCenter.currentNotificationCenter;
  } @catch (NSException*) {
    return nil;
  }
}

UNNotificationRequest* requestOf(const UserNotification& notification) {
  UNMutableNotificationContent* content = [[UNMutableNotificationContent alloc] init];
  content.title = nsString(notification.title);
  if (!notification.body.empty()) content.body = nsString(notification.body);
  // Without a trigger it is delivered at once.
  return [UNNotificationRequest requestWithIdentifier:nsString(notification.identifier)
                                              content:content
                                              trigger:nil];
}

}  // namespace

struct MacUserNotifications::Centre {
  UNUserNotificationCenter* object = currentCentre();
};

MacUserNotifications::MacUserNotifications() : centre_(std::make_unique<Centre>()) {}
MacUserNotifications::~MacUserNotifications() = default;

void MacUserNotifications::post(const UserNotification& notification) {
  [centre_->object addNotificationRequest:requestOf(notification) withCompletionHandler:nil];
}

void MacUserNotifications::removeAllDelivered() {
  [centre_->object removeAllDeliveredNotifications];
}

void MacUserNotifications::requestAuthorization() {
  // No option: what the user then allows is a notification in silence. The answer changes nothing.
  [centre_->object requestAuthorizationWithOptions:UNAuthorizationOptions(0)
                                 completionHandler:^(BOOL, NSError*){
                                 }];
}

}  // namespace kelvane
