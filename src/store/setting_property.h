// A view's stored property backed by a setting: reads and writes go to the key, and the view
// redraws when the observable says so. Main thread; shared by the view's copies.
#pragma once

#include <memory>

#include "store/setting_observable.h"

namespace kelvane {

template <typename V>
class SettingProperty {
 public:
  SettingProperty(const SettingKey<V>& key, RunLoop& runLoop)
      : observable_(std::make_shared<SettingObservable<V>>(key, runLoop)) {}

  V get() const { return observable_->key().get(); }
  void set(const V& value) const { observable_->key().set(value); }
  const SettingObservable<V>& observable() const { return *observable_; }

 private:
  std::shared_ptr<SettingObservable<V>> observable_;
};

}  // namespace kelvane
