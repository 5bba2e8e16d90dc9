#include "platform/portable/preferences_table.h"

#include <utility>

namespace kelvane {
namespace {

std::optional<PropertyValue> find(const PropertyDictionary& values, const std::string& key) {
  const auto found = values.find(key);
  return found == values.end() ? std::nullopt : std::optional(found->second);
}

}  // namespace

std::optional<PropertyValue> PreferencesTable::object(const std::string& key) const {
  const std::lock_guard lock(mutex_);
  auto value = find(stored_, key);
  return value ? value : find(defaults_, key);
}

void PreferencesTable::setObject(const std::string& key, PropertyValue value) {
  change(key, std::move(value), Origin::here);
}

void PreferencesTable::removeObject(const std::string& key) {
  change(key, std::nullopt, Origin::here);
}

void PreferencesTable::registerDefaults(const PropertyDictionary& defaults) {
  const std::lock_guard lock(mutex_);
  for (const auto& [key, value] : defaults) defaults_.insert_or_assign(key, value);
}

PreferenceObserverId PreferencesTable::addObserver(const std::string& key,
                                                   PreferenceObserverOptions options,
                                                   Observer observer) {
  const PreferenceObserverId id = observers_.add(key, options.prior, observer);
  if (!options.initial) return id;
  PreferenceChange initial;
  {
    const std::lock_guard lock(mutex_);
    initial.newValue = find(stored_, key);
  }
  observer(initial);
  return id;
}

void PreferencesTable::removeObserver(PreferenceObserverId id) { observers_.remove(id); }

PropertyDictionary PreferencesTable::stored() const {
  const std::lock_guard lock(mutex_);
  return stored_;
}

void PreferencesTable::load(PropertyDictionary stored) {
  const std::lock_guard lock(mutex_);
  stored_ = std::move(stored);
}

void PreferencesTable::changedElsewhere(const std::string& key,
                                        std::optional<PropertyValue> value) {
  change(key, std::move(value), Origin::elsewhere);
}

void PreferencesTable::change(const std::string& key, std::optional<PropertyValue> value,
                              Origin origin) {
  PreferenceChange notice;
  {
    const std::lock_guard lock(mutex_);
    notice.oldValue = find(stored_, key);
  }
  if (notice.oldValue == value) return;
  notice.isPrior = true;
  observers_.notify(key, notice);

  notice.isPrior = false;
  notice.newValue = value;
  {
    const std::lock_guard lock(mutex_);
    // Asked again: those who were told before may have changed it.
    notice.oldValue = find(stored_, key);
    if (value) {
      stored_.insert_or_assign(key, *std::move(value));
    } else {
      stored_.erase(key);
    }
    if (origin == Origin::here) storedValueChanged(key);
  }
  observers_.notify(key, notice);
}

}  // namespace kelvane
