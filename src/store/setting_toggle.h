// A checkbox bound to a setting: what it shows and what a click does. How it looks is its window's
// business. Main thread; the key and the run loop outlive it.
#pragma once

#include <functional>
#include <string>

#include "store/setting_observable.h"

namespace kelvane {

class SettingToggle {
 public:
  using OnChange = std::function<void(bool)>;

  // `onChange` may be empty. It is told each new value after it was stored, whoever changed it.
  SettingToggle(std::string label, const SettingKey<bool>& key, RunLoop& runLoop,
                OnChange onChange = {});

  const std::string& label() const { return label_; }
  bool isOn() const { return observable_.value(); }
  void setOn(bool isOn) const { observable_.setValue(isOn); }
  const SettingObservable<bool>& observable() const { return observable_; }

 private:
  std::string label_;
  SettingObservable<bool> observable_;
  UserDefaultsKeyObservation changes_;
};

}  // namespace kelvane
