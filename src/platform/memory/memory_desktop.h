// The rest of the in-memory computer: notifications, windows, login items, the workspace and facts
// about the system. Each remembers what it was asked. Main thread.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "platform/login_items.h"
#include "platform/portable/run_loop_queue.h"
#include "platform/system_info.h"
#include "platform/user_notifications.h"
#include "platform/windows.h"
#include "platform/workspace.h"

namespace kelvane {

class MemoryUserNotifications : public UserNotifications {
 public:
  void post(const UserNotification& notification) override;
  void removeAllDelivered() override;
  void requestAuthorization() override { ++authorizationRequests; }

  std::vector<UserNotification> posted;               // all, in order
  std::map<std::string, UserNotification> delivered;  // shown now, by identifier
  int removals = 0;
  int authorizationRequests = 0;
};

// Alerts stay open until a test presses a button or the application aborts them.
class MemoryWindows : public Windows {
 public:
  explicit MemoryWindows(RunLoopQueue& runLoop) : runLoop_(runLoop) {}

  void activate() override { ++activations; }
  std::unique_ptr<AlertHandle> alert(const Alert& alert, std::function<void(int)> done) override;
  std::unique_ptr<ViewWindow> openWindow(const std::string& title, const ViewNode& tree,
                                         ViewWindowEvents events) override;
  void showAboutPanel(const ApplicationInformation& information) override {
    aboutPanels.push_back(information);
  }
  std::unique_ptr<PopoverHandle> showPopover(const PopoverContent& content,
                                             std::function<void()> closed) override;

  // Ends the latest open alert with this button; `done` runs in the next turn.
  void pressButton(int index);
  bool isAlertOpen() const { return !openAlerts_.empty(); }

  struct Window {
    std::string title;
    ViewNode tree;
    ViewWindowEvents events;
    std::vector<ViewStep> steps;  // all that were applied
    bool isOpen = true;
    int timesInFront = 0;  // besides at its opening
  };
  struct Popover {
    PopoverContent content;
    std::function<void()> closed;
    bool isOpen = true;
  };
  int activations = 0;
  std::vector<Alert> alerts;  // all that were shown
  std::vector<std::shared_ptr<Window>> windows;
  std::vector<std::shared_ptr<Popover>> popovers;
  bool canShowPopovers = true;
  bool canShowWindows = true;
  std::vector<ApplicationInformation> aboutPanels;

 private:
  struct OpenAlert;
  void finish(const std::shared_ptr<OpenAlert>& open, int button);

  RunLoopQueue& runLoop_;
  std::vector<std::shared_ptr<OpenAlert>> openAlerts_;
};

class MemoryLoginItems : public LoginItems {
 public:
  std::optional<std::vector<PropertyDictionary>> jobs() override { return jobList; }
  bool setEnabled(const std::string& label, bool enabled) override;

  std::optional<std::vector<PropertyDictionary>> jobList = std::vector<PropertyDictionary>{};
  bool refuses = false;
  std::vector<std::pair<std::string, bool>> requests;
};

class MemoryWorkspace : public Workspace {
 public:
  void openUrl(const std::string& url) override { opened.push_back(url); }
  void openFile(const std::string& path) override { opened.push_back("file " + path); }
  void openBatterySettings() override { opened.push_back("battery settings"); }

  std::vector<std::string> opened;
};

class MemorySystemInfo : public SystemInfo {
 public:
  std::optional<SystemVersion> macOSVersion() override { return version; }
  std::string systemDescription() override { return description; }
  bool isLowPowerModeEnabled() override { return lowPowerMode; }
  std::optional<std::string> hardwareModel() override { return model; }
  std::optional<std::string> architecture() override { return machine; }
  std::string localeIdentifier() override { return "en_US"; }
  std::string languageNameInEnglish() override { return "English"; }
  std::optional<std::uint64_t> memoryFootprint() override { return footprint; }
  int screenCount() override { return screens; }
  double primaryScreenScale() override { return scale; }
  bool prefersReducedMotion() override { return reducedMotion; }
  ModifierKeys modifierKeys() override { return modifiers; }

  std::optional<SystemVersion> version;
  std::string description = "Memory 1.0";
  bool lowPowerMode = false;
  std::optional<std::string> model = "Memory1,1";
  std::optional<std::string> machine = "x86_64";
  std::optional<std::uint64_t> footprint = 8'000'000;
  int screens = 1;
  double scale = 2;
  bool reducedMotion = false;
  ModifierKeys modifiers;
};

}  // namespace kelvane
