// The demo's notification centre and windows: what the application says becomes lines on a stream,
// at once. Main thread.
#pragma once

#include <functional>
#include <iosfwd>
#include <memory>

#include "platform/memory/memory_desktop.h"
#include "platform/portable/absent.h"

namespace kelvane {

class DemoNotifications : public MemoryUserNotifications {
 public:
  // The stream outlives this object.
  explicit DemoNotifications(std::ostream& out) : out_(out) {}

  void post(const UserNotification& notification) override;
  void removeAllDelivered() override;

 private:
  std::ostream& out_;
};

// Alerts stay until the application itself ends them, because nobody is there to press a button.
// They hold back no power events.
class DemoWindows : public AbsentWindows {
 public:
  // The loop and the stream outlive this object.
  DemoWindows(RunLoop& runLoop, std::ostream& out);

  std::unique_ptr<AlertHandle> alert(const Alert& alert, std::function<void(int)> done) override;
  bool isAlertOpen() const { return *openAlerts_ > 0; }

 private:
  RunLoop& runLoop_;
  std::ostream& out_;
  std::shared_ptr<int> openAlerts_ = std::make_shared<int>(0);
};

}  // namespace kelvane
