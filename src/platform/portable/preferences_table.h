// Preferences in memory: stored values, registered defaults and observers, as every platform
// without a preferences service of its own needs them. A platform derives from it and keeps the
// values.
//
// Any thread. No lock is held while an observer or `storedValueChanged` runs, so both may call
// back. An observer removed on another thread than the one it is running on may finish its call
// after that.
#pragma once

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "platform/preferences.h"

namespace kelvane {

class PreferencesTable : public Preferences {
 public:
  PreferencesTable(const PreferencesTable&) = delete;
  PreferencesTable& operator=(const PreferencesTable&) = delete;

  std::optional<PropertyValue> object(const std::string& key) const override;
  void setObject(const std::string& key, PropertyValue value) override;
  void removeObject(const std::string& key) override;
  void registerDefaults(const PropertyDictionary& defaults) override;
  [[nodiscard]] PreferenceObserverId addObserver(const std::string& key,
                                                 PreferenceObserverOptions options,
                                                 Observer observer) override;
  void removeObserver(PreferenceObserverId id) override;

  // What is stored, without the defaults.
  PropertyDictionary stored() const;

 protected:
  explicit PreferencesTable(PropertyDictionary stored = {}) : stored_(std::move(stored)) {}

  // Replaces everything stored and tells nobody: for reading the values in at the start.
  void load(PropertyDictionary stored);

  // Another process stored `value`, or removed what was stored when absent. Observers are told as
  // of a change made here; `storedValueChanged` is not called.
  void changedElsewhere(const std::string& key, std::optional<PropertyValue> value);

  // A value was stored or removed here. Called on the changing thread, when `object` answers the
  // new value already and observers have not heard of it yet.
  virtual void storedValueChanged(const std::string& key) = 0;

 private:
  struct Entry {
    PreferenceObserverId id;
    bool wantsPrior;
    Observer observer;
    std::atomic<bool> isActive{true};
  };
  using Entries = std::vector<std::shared_ptr<Entry>>;
  enum class Origin { here, elsewhere };

  void change(const std::string& key, std::optional<PropertyValue> value, Origin origin);
  // The following need the lock.
  std::optional<PropertyValue> storedValue(const std::string& key) const;
  Entries entriesOf(const std::string& key) const;

  mutable std::mutex mutex_;
  PropertyDictionary stored_;
  PropertyDictionary defaults_;
  std::map<std::string, Entries> observers_;
  PreferenceObserverId lastId_ = 0;
};

}  // namespace kelvane
