#include "platform/macos/windows/native_alert.h"

#include "platform/macos/drawing/ns_image.h"
#include "platform/macos/foundation/strings.h"

namespace kelvane {

NSAlert* nsAlert(const Alert& alert) {
  NSAlert* made = [[NSAlert alloc] init];
  made.messageText = nsString(alert.title);
  if (!alert.message.empty()) made.informativeText = nsString(alert.message);
  static_assert(NSUInteger(AlertStyle::warning) == NSAlertStyleWarning &&
                NSUInteger(AlertStyle::informational) == NSAlertStyleInformational &&
                NSUInteger(AlertStyle::critical) == NSAlertStyleCritical);
  made.alertStyle = static_cast<NSAlertStyle>(alert.style);
  for (const std::string& title : alert.buttons) [made addButtonWithTitle:nsString(title)];
  // The alert is at least as wide as what it has below its text.
  if (alert.minimumWidth > 0)
    made.accessoryView = [[NSView alloc] initWithFrame:NSMakeRect(0, 0, alert.minimumWidth, 0)];
  if (alert.icon) made.icon = nsImage(*alert.icon);
  return made;
}

}  // namespace kelvane
