// The application's notifications in the user's notification centre. Main thread.
#pragma once

#include <memory>

#include "platform/user_notifications.h"

namespace kelvane {

class MacUserNotifications : public UserNotifications {
 public:
  MacUserNotifications();
  ~MacUserNotifications() override;

  void post(const UserNotification& notification) override;
  void removeAllDelivered() override;
  void requestAuthorization() override;

 private:
  struct Centre;
  std::unique_ptr<Centre> centre_;
};

}  // namespace kelvane
