// The application's notifications as notices of the desktop. Main thread.
#pragma once

#include <set>
#include <string>

#include "platform/linux/notifications/notice_board.h"
#include "platform/user_notifications.h"

namespace kelvane {

class LinuxUserNotifications : public UserNotifications {
 public:
  // The board outlives this.
  explicit LinuxUserNotifications(NoticeBoard& board) : board_(board) {}

  void post(const UserNotification& notification) override;
  void removeAllDelivered() override;
  // Nothing: no desktop asks its user.
  void requestAuthorization() override {}

 private:
  NoticeBoard& board_;
  std::set<std::string> posted_;
};

}  // namespace kelvane
