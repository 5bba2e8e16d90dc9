// Platform parts that a computer may lack: nothing is shown, opened or started. Main thread.
#pragma once

#include <memory>

#include "platform/login_items.h"
#include "platform/run_loop.h"
#include "platform/user_notifications.h"
#include "platform/windows.h"
#include "platform/workspace.h"

namespace kelvane {

class AbsentUserNotifications : public UserNotifications {
 public:
  void post(const UserNotification&) override {}
  void removeAllDelivered() override {}
  void requestAuthorization() override {}
};

class AbsentLoginItems : public LoginItems {
 public:
  std::optional<std::vector<PropertyDictionary>> jobs() override { return std::nullopt; }
  bool setEnabled(const std::string&, bool) override { return false; }
};

class AbsentWorkspace : public Workspace {
 public:
  void openUrl(const std::string&) override {}
  void openFile(const std::string&) override {}
  void openBatterySettings() override {}
};

// Alerts count as dismissed in the next turn, because nobody can see them.
class AbsentWindows : public Windows {
 public:
  explicit AbsentWindows(RunLoop& runLoop) : runLoop_(runLoop) {}

  void activate() override {}
  std::unique_ptr<AlertHandle> alert(const Alert&, std::function<void(int)> done) override {
    struct Ended : AlertHandle {
      void abort() override {}
    };
    runLoop_.async([done = std::move(done)] { done(0); });
    return std::make_unique<Ended>();
  }
  std::unique_ptr<ViewWindow> openWindow(const std::string&, const ViewNode&,
                                         ViewWindowEvents) override {
    return nullptr;
  }
  void showAboutPanel(const ApplicationInformation&) override {}
  std::unique_ptr<PopoverHandle> showPopover(const PopoverContent&,
                                             std::function<void()>) override {
    return nullptr;
  }

 private:
  RunLoop& runLoop_;
};

}  // namespace kelvane
