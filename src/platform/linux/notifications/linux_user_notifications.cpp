#include "platform/linux/notifications/linux_user_notifications.h"

namespace kelvane {

void LinuxUserNotifications::post(const UserNotification& notification) {
  posted_.insert(notification.identifier);
  board_.post(notification.identifier, {notification.title, notification.body, "battery"});
}

void LinuxUserNotifications::removeAllDelivered() {
  for (const std::string& identifier : posted_) board_.close(identifier);
  posted_.clear();
}

}  // namespace kelvane
