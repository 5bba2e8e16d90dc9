// An optional tie of an observation to an owner object: the observation ends when the owner does.
#pragma once

#include <memory>
#include <optional>

namespace kelvane {

class LifetimeAssociation {
 public:
  // No owner: never ends anything.
  LifetimeAssociation() = default;
  template <typename Owner>
  explicit LifetimeAssociation(const std::shared_ptr<Owner>& owner) : owner_(owner) {}

  // Runs `job` with the owner kept alive; false, without running it, when the owner is gone.
  template <typename Job>
  bool runWhileAlive(Job&& job) const {
    if (!owner_) {
      job();
      return true;
    }
    const std::shared_ptr<const void> alive = owner_->lock();
    if (!alive) return false;
    job();
    return true;
  }

 private:
  std::optional<std::weak_ptr<const void>> owner_;
};

}  // namespace kelvane
