// Preferences in memory: stored values, registered defaults and observers, as every platform
// without a preferences service of its own needs them. A platform derives from it and keeps the
// values.
//
// Any thread. No lock is held while an observer runs, so it may call back; PreferenceObservers says
// the rest.
#pragma once

#include <mutex>
#include <optional>
#include <string>
#include <utility>

#include "platform/portable/preference_observers.h"
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

  // A value was stored or removed here, and observers have not heard of it yet. Called on the
  // changing thread with the table locked, so that whoever reads the table then has heard of what
  // is new in it; must not call back.
  virtual void storedValueChanged(const std::string& key) = 0;

 private:
  enum class Origin { here, elsewhere };

  void change(const std::string& key, std::optional<PropertyValue> value, Origin origin);

  mutable std::mutex mutex_;
  PropertyDictionary stored_;
  PropertyDictionary defaults_;
  PreferenceObservers observers_;
};

}  // namespace kelvane
