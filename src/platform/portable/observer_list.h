// Callbacks of an adaptor's observers, called in the order in which they came. Main thread. May be
// changed while it is walked; a registration that is destroyed is not called any more.
#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace kelvane {

class ObserverList {
 public:
  using Callback = std::function<void()>;
  // Ends the observation when it is destroyed; may outlive the list.
  using Registration = std::shared_ptr<void>;

  [[nodiscard]] Registration add(Callback callback) {
    auto entry = std::make_shared<Callback>(std::move(callback));
    entries_.push_back(entry);
    return entry;
  }

  void notify() {
    std::erase_if(entries_, [](const auto& entry) { return entry.expired(); });
    for (const auto entries = entries_; const auto& weak : entries)
      if (const auto entry = weak.lock()) (*entry)();
  }

 private:
  std::vector<std::weak_ptr<Callback>> entries_;
};

}  // namespace kelvane
