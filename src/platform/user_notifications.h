// The user's notification centre. Main thread. Nothing here fails visibly: a centre that is absent,
// broken or silenced shows nothing.
#pragma once

#include <string>

namespace kelvane {

struct UserNotification {
  std::string identifier;  // a new notification replaces the one with the same identifier
  std::string title;
  std::string body;  // empty: none
};

class UserNotifications {
 public:
  virtual ~UserNotifications() = default;

  // Shows a notification at once, without sound.
  virtual void post(const UserNotification& notification) = 0;
  // Takes away every notification of this application that is still shown.
  virtual void removeAllDelivered() = 0;
  // Asks the user for permission where the system wants that. The answer is not reported.
  virtual void requestAuthorization() = 0;
};

}  // namespace kelvane
