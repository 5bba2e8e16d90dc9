// A setting as a view sees it: its value, and a signal to redraw before it changes. Made and
// dropped on the main thread; the key and the run loop outlive it.
#pragma once

#include <memory>
#include <thread>
#include <utility>
#include <variant>

#include "platform/run_loop.h"
#include "reactive/subject.h"
#include "store/observe.h"

namespace kelvane {

template <typename V>
class SettingObservable {
 public:
  SettingObservable(const SettingKey<V>& key, RunLoop& runLoop)
      : key_(key),
        state_(std::make_shared<State>(runLoop)),
        cancellable_(publisher(key, {.prior = true})
                         .subscribe([weak = std::weak_ptr(state_)](const KeyChange<V>& change) {
                           // Nothing after the change: views read the value when they redraw.
                           if (change.isPrior) State::willChange(weak);
                         })) {}

  const SettingKey<V>& key() const { return key_; }
  V value() const { return key_.get(); }
  void setValue(const V& value) const { key_.set(value); }

  // Sent on the main thread before the value changes; when another thread changes it, as a job of
  // the main queue, which may be after.
  Publisher<std::monostate> objectWillChange() const { return state_->subject.publisher(); }

 private:
  struct State {
    explicit State(RunLoop& loop) : runLoop(loop) {}

    static void willChange(const std::weak_ptr<State>& weak) {
      const auto state = weak.lock();
      if (!state) return;
      if (std::this_thread::get_id() == state->mainThread) {
        state->subject.send({});
      } else {
        state->runLoop.async([weak] {
          if (const auto alive = weak.lock()) alive->subject.send({});
        });
      }
    }

    RunLoop& runLoop;
    const std::thread::id mainThread = std::this_thread::get_id();
    PassthroughSubject<std::monostate> subject;
  };

  const SettingKey<V>& key_;
  std::shared_ptr<State> state_;
  Subscription cancellable_;
};

}  // namespace kelvane
