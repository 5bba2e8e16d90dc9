#include "programs/kelvane-commands/demo_desktop.h"

#include <ostream>
#include <utility>

namespace kelvane {

void DemoNotifications::post(const UserNotification& notification) {
  MemoryUserNotifications::post(notification);
  out_ << "    notice: " << notification.title
       << (notification.body.empty() ? "" : " - " + notification.body) << std::endl;
}

void DemoNotifications::removeAllDelivered() {
  if (!delivered.empty()) out_ << "    notice: taken away" << std::endl;
  MemoryUserNotifications::removeAllDelivered();
}

DemoWindows::DemoWindows(RunLoop& runLoop, std::ostream& out)
    : AbsentWindows(runLoop), runLoop_(runLoop), out_(out) {}

std::unique_ptr<AlertHandle> DemoWindows::alert(const Alert& alert, std::function<void(int)> done) {
  struct Handle : AlertHandle {
    void abort() override {
      if (auto once = std::exchange(end, nullptr)) once();
    }
    std::function<void()> end;
  };
  out_ << "    alert:  " << alert.title << std::endl;
  ++*openAlerts_;
  auto handle = std::make_unique<Handle>();
  handle->end = [this, done = std::move(done)] {
    runLoop_.async([&out = out_, open = openAlerts_, done] {
      --*open;
      out << "    alert:  closed" << std::endl;
      done(0);
    });
  };
  return handle;
}

}  // namespace kelvane
