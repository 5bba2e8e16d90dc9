// The notices about the battery's level. Main thread; called within a change of the power sources,
// while the battery still tells the charge of the change before.
#pragma once

namespace kelvane {

class Battery;
class UserNotifications;
struct SettingsKeys;

struct NoticeContext {
  const Battery& battery;
  const SettingsKeys& settings;
  UserNotifications& userNotifications;
};

// Tells of a level that the user chose when the charge has just arrived at it, from either side.
// While on power and on battery there is a list of levels each.
void checkPercentageNotification(const NoticeContext& context);

// Tells once, when the charge arrives at full while on power, if the user wants it.
void checkFullyCharged(const NoticeContext& context);

}  // namespace kelvane
