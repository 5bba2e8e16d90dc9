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
  auto entry = std::make_shared<Entry>();
  entry->wantsPrior = options.prior;
  entry->observer = std::move(observer);
  PreferenceChange initial;
  {
    const std::lock_guard lock(mutex_);
    entry->id = ++lastId_;
    observers_[key].push_back(entry);
    if (options.initial) initial.newValue = storedValue(key);
  }
  const PreferenceObserverId id = entry->id;
  if (options.initial) entry->observer(initial);
  return id;
}

void PreferencesTable::removeObserver(PreferenceObserverId id) {
  // Destroyed after the lock is released: an observer may own things that call back.
  std::shared_ptr<Entry> removed;
  const std::lock_guard lock(mutex_);
  for (auto of = observers_.begin(); of != observers_.end(); ++of) {
    auto& entries = of->second;
    for (auto entry = entries.begin(); entry != entries.end(); ++entry) {
      if ((*entry)->id != id) continue;
      removed = std::move(*entry);
      removed->isActive = false;
      entries.erase(entry);
      if (entries.empty()) observers_.erase(of);
      return;
    }
  }
}

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
  Entries entries;
  {
    const std::lock_guard lock(mutex_);
    notice.oldValue = storedValue(key);
    if (notice.oldValue == value) return;
    entries = entriesOf(key);
  }
  notice.isPrior = true;
  for (const auto& entry : entries)
    if (entry->wantsPrior && entry->isActive) entry->observer(notice);

  notice.isPrior = false;
  notice.newValue = value;
  {
    const std::lock_guard lock(mutex_);
    // Asked again: the prior notices may have changed the value and the observers.
    notice.oldValue = storedValue(key);
    entries = entriesOf(key);
    if (value) {
      stored_.insert_or_assign(key, *std::move(value));
    } else {
      stored_.erase(key);
    }
    if (origin == Origin::here) storedValueChanged(key);
  }
  for (const auto& entry : entries)
    if (entry->isActive) entry->observer(notice);
}

std::optional<PropertyValue> PreferencesTable::storedValue(const std::string& key) const {
  return find(stored_, key);
}

PreferencesTable::Entries PreferencesTable::entriesOf(const std::string& key) const {
  const auto found = observers_.find(key);
  return found == observers_.end() ? Entries() : found->second;
}

}  // namespace kelvane
