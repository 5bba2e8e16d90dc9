#include "platform/memory/memory_desktop.h"

#include <algorithm>
#include <utility>

namespace kelvane {

void MemoryUserNotifications::post(const UserNotification& notification) {
  posted.push_back(notification);
  delivered[notification.identifier] = notification;
}

void MemoryUserNotifications::removeAllDelivered() {
  delivered.clear();
  ++removals;
}

struct MemoryWindows::OpenAlert {
  std::function<void(int)> done;
  std::unique_ptr<RunLoopQueue::ModeScope> modal;
  bool isEnding = false;
};

std::unique_ptr<AlertHandle> MemoryWindows::alert(const Alert& alert,
                                                  std::function<void(int)> done) {
  class Handle : public AlertHandle {
   public:
    Handle(MemoryWindows& windows, std::weak_ptr<OpenAlert> open)
        : windows_(windows), open_(std::move(open)) {}
    void abort() override {
      if (const auto open = open_.lock()) windows_.finish(open, 0);
    }

   private:
    MemoryWindows& windows_;
    std::weak_ptr<OpenAlert> open_;
  };
  alerts.push_back(alert);
  auto open = std::make_shared<OpenAlert>();
  open->done = std::move(done);
  open->modal = std::make_unique<RunLoopQueue::ModeScope>(runLoop_, RunLoopMode::modal);
  openAlerts_.push_back(open);
  return std::make_unique<Handle>(*this, open);
}

void MemoryWindows::pressButton(int index) {
  if (!openAlerts_.empty()) finish(openAlerts_.back(), index);
}

void MemoryWindows::finish(const std::shared_ptr<OpenAlert>& open, int button) {
  if (std::exchange(open->isEnding, true)) return;
  runLoop_.async([this, open, button] {
    std::erase(openAlerts_, open);
    open->modal.reset();
    open->done(button);
  });
}

std::unique_ptr<ViewWindow> MemoryWindows::openWindow(const std::string& title,
                                                      const ViewNode& tree,
                                                      ViewWindowEvents events) {
  class Shown : public ViewWindow {
   public:
    explicit Shown(std::shared_ptr<Window> window) : window_(std::move(window)) {}
    ~Shown() override { window_->isOpen = false; }
    void apply(const std::vector<ViewStep>& steps) override {
      window_->steps.insert(window_->steps.end(), steps.begin(), steps.end());
    }
    void bringToFront() override { ++window_->timesInFront; }

   private:
    std::shared_ptr<Window> window_;
  };
  if (!canShowWindows) return nullptr;
  windows.push_back(std::make_shared<Window>(Window{title, tree, std::move(events)}));
  return std::make_unique<Shown>(windows.back());
}

std::unique_ptr<PopoverHandle> MemoryWindows::showPopover(const PopoverContent& content,
                                                          std::function<void()> closed) {
  class Shown : public PopoverHandle {
   public:
    explicit Shown(std::shared_ptr<Popover> popover) : popover_(std::move(popover)) {}
    void close() override {
      if (std::exchange(popover_->isOpen, false)) popover_->closed();
    }

   private:
    std::shared_ptr<Popover> popover_;
  };
  if (!canShowPopovers) return nullptr;
  popovers.push_back(std::make_shared<Popover>(Popover{content, std::move(closed), true}));
  return std::make_unique<Shown>(popovers.back());
}

bool MemoryLoginItems::setEnabled(const std::string& label, bool enabled) {
  requests.emplace_back(label, enabled);
  if (refuses || !jobList) return false;
  std::erase_if(*jobList, [&](const PropertyDictionary& job) {
    const auto found = job.find("Label");
    return found != job.end() && found->second == PropertyValue(label);
  });
  if (enabled) jobList->push_back({{"Label", label}, {"OnDemand", true}});
  return true;
}

}  // namespace kelvane
