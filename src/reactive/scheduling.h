// Publishers that deliver later: on the main queue, or once things have settled. Main thread. The
// run loop outlives the subscriptions; nothing is delivered after a subscription was dropped.
#pragma once

#include <memory>
#include <utility>

#include "platform/run_loop.h"
#include "reactive/publisher.h"
#include "reactive/subscription.h"

namespace kelvane {

// Every value, each in a job of its own on the main queue.
template <typename T>
Publisher<T> receiveOnMainQueue(Publisher<T> publisher, RunLoop& runLoop) {
  return Publisher<T>([publisher = std::move(publisher),
                       &runLoop](typename Publisher<T>::Handler handler) {
    auto receiver = std::make_shared<typename Publisher<T>::Handler>(std::move(handler));
    auto upstream = publisher.subscribe([&runLoop, weak = std::weak_ptr(receiver)](const T& value) {
      runLoop.async([weak, value] {
        if (const auto alive = weak.lock()) (*alive)(value);
      });
    });
    return Subscription::keeping(std::pair(std::move(upstream), std::move(receiver)));
  });
}

// Only the last of the values that come less than `seconds` apart, `seconds` after it came.
template <typename T>
Publisher<T> debounce(Publisher<T> publisher, double seconds, RunLoop& runLoop) {
  struct State {
    typename Publisher<T>::Handler handler;
    std::unique_ptr<Timer> timer;
  };
  return Publisher<T>([publisher = std::move(publisher), seconds,
                       &runLoop](typename Publisher<T>::Handler handler) {
    auto state = std::make_shared<State>(State{std::move(handler), nullptr});
    auto upstream =
        publisher.subscribe([&runLoop, seconds, weak = std::weak_ptr(state)](const T& value) {
          const auto alive = weak.lock();
          if (!alive) return;
          alive->timer = runLoop.startTimer(seconds, false, [weak, value] {
            if (const auto settled = weak.lock()) settled->handler(value);
          });
        });
    return Subscription::keeping(std::pair(std::move(upstream), std::move(state)));
  });
}

}  // namespace kelvane
