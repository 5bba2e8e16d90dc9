// A handle on something that is being listened to: dropping it ends the listening.
//
// Main thread. May be dropped at any time, also from inside the callback it stands for.
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace kelvane {

class Subscription {
 public:
  Subscription() = default;
  explicit Subscription(std::function<void()> cancel) : cancel_(std::move(cancel)) {}
  // Keeps `owner` alive until the subscription is dropped.
  template <typename Owner>
  static Subscription keeping(Owner owner) {
    return Subscription(
        [kept = std::make_shared<Owner>(std::move(owner))]() mutable { kept.reset(); });
  }
  Subscription(Subscription&& other) noexcept : cancel_(std::exchange(other.cancel_, nullptr)) {}
  Subscription& operator=(Subscription&& other) noexcept {
    if (this != &other) {
      cancel();
      cancel_ = std::exchange(other.cancel_, nullptr);
    }
    return *this;
  }
  Subscription(const Subscription&) = delete;
  Subscription& operator=(const Subscription&) = delete;
  ~Subscription() { cancel(); }

  void cancel() {
    if (const auto job = std::exchange(cancel_, nullptr)) job();
  }

 private:
  std::function<void()> cancel_;
};

// The subscriptions of one owner; they end with it.
using Cancellables = std::vector<Subscription>;

}  // namespace kelvane
