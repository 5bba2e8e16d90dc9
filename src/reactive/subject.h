// Subjects: publishers that somebody sends through. Main thread, synchronous: `send` returns after
// every subscriber has run. Subscribers run in the order in which they came; one dropped during a
// send is not called any more, one added hears the next send.
#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "reactive/publisher.h"
#include "reactive/subscription.h"

namespace kelvane {

// Passes values through and keeps none.
template <typename T>
class PassthroughSubject {
 public:
  using Handler = typename Publisher<T>::Handler;

  void send(const T& value) {
    // A copy of the list: subscribers come and go while it is walked.
    for (const auto subscribers = *subscribers_; const auto& subscriber : subscribers)
      if (subscriber->isActive) subscriber->handler(value);
  }

  [[nodiscard]] Subscription subscribe(Handler handler) {
    auto subscriber = std::make_shared<Subscriber>(Subscriber{std::move(handler)});
    subscribers_->push_back(subscriber);
    return Subscription([list = std::weak_ptr(subscribers_), subscriber] {
      subscriber->isActive = false;
      if (const auto alive = list.lock()) std::erase(*alive, subscriber);
    });
  }

  // The subject must outlive subscribing through it, not the subscriptions.
  Publisher<T> publisher() {
    return Publisher<T>([this](Handler handler) { return subscribe(std::move(handler)); });
  }

 private:
  struct Subscriber {
    Handler handler;
    bool isActive = true;
  };
  using List = std::vector<std::shared_ptr<Subscriber>>;
  std::shared_ptr<List> subscribers_ = std::make_shared<List>();
};

// Keeps the last value and gives it to each new subscriber first.
template <typename T>
class CurrentValueSubject {
 public:
  using Handler = typename Publisher<T>::Handler;

  explicit CurrentValueSubject(T value) : value_(std::move(value)) {}

  const T& value() const { return value_; }

  void send(const T& value) {
    value_ = value;
    subject_.send(value);
  }

  [[nodiscard]] Subscription subscribe(Handler handler) {
    const T current = value_;
    handler(current);
    return subject_.subscribe(std::move(handler));
  }

  Publisher<T> publisher() {
    return Publisher<T>([this](Handler handler) { return subscribe(std::move(handler)); });
  }

 private:
  T value_;
  PassthroughSubject<T> subject_;
};

}  // namespace kelvane
