// Something that can be subscribed to, without the means to send. Main thread, synchronous.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <utility>

#include "reactive/subscription.h"

namespace kelvane {

template <typename T>
class Publisher {
 public:
  using Handler = std::function<void(const T&)>;
  using Subscribe = std::function<Subscription(Handler)>;

  explicit Publisher(Subscribe subscribe) : subscribe_(std::move(subscribe)) {}

  // Calls `handler` for every value until the subscription is dropped.
  [[nodiscard]] Subscription subscribe(Handler handler) const {
    return subscribe_(std::move(handler));
  }

  // The same values without the first one that each subscriber would get.
  Publisher dropFirst() const {
    return Publisher([subscribe = subscribe_](Handler handler) {
      return subscribe([first = true, handler = std::move(handler)](const T& value) mutable {
        if (std::exchange(first, false)) return;
        handler(value);
      });
    });
  }

 private:
  Subscribe subscribe_;
};

}  // namespace kelvane
