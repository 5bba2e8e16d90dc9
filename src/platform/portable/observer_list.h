// Callbacks that are called in the order they were added; any of them may end any observation while
// they are called. Main thread.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

#include "platform/status_bar.h"

namespace kelvane {

class ObserverList {
 public:
  [[nodiscard]] std::unique_ptr<StatusItemObservation> add(std::function<void()> callback) {
    const int id = ++lastId_;
    callbacks_->emplace(id, std::move(callback));
    return std::make_unique<Observation>(callbacks_, id);
  }

  void notify() const {
    const auto callbacks = callbacks_;
    std::vector<int> ids;
    for (const auto& [id, callback] : *callbacks) ids.push_back(id);
    for (const int id : ids) {
      const auto found = callbacks->find(id);
      if (found == callbacks->end()) continue;
      const auto callback = found->second;
      callback();
    }
  }

 private:
  using Callbacks = std::map<int, std::function<void()>>;

  class Observation : public StatusItemObservation {
   public:
    Observation(std::weak_ptr<Callbacks> callbacks, int id)
        : callbacks_(std::move(callbacks)), id_(id) {}
    ~Observation() override {
      if (const auto callbacks = callbacks_.lock()) callbacks->erase(id_);
    }

   private:
    std::weak_ptr<Callbacks> callbacks_;
    int id_;
  };

  std::shared_ptr<Callbacks> callbacks_ = std::make_shared<Callbacks>();
  int lastId_ = 0;
};

}  // namespace kelvane
