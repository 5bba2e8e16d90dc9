#include "platform/portable/preference_observers.h"

#include <algorithm>
#include <utility>

namespace kelvane {

PreferenceObserverId PreferenceObservers::add(const std::string& key, bool wantsPrior,
                                              Preferences::Observer observer) {
  auto entry = std::make_shared<Entry>();
  entry->wantsPrior = wantsPrior;
  entry->observer = std::move(observer);
  const std::lock_guard lock(mutex_);
  entry->id = ++lastId_;
  entries_[key].push_back(entry);
  return entry->id;
}

void PreferenceObservers::remove(PreferenceObserverId id) {
  // Destroyed after the lock is released: an observer may own things that call back.
  std::shared_ptr<Entry> removed;
  const std::lock_guard lock(mutex_);
  for (auto& [key, entries] : entries_) {
    const auto found =
        std::ranges::find_if(entries, [id](const auto& entry) { return entry->id == id; });
    if (found == entries.end()) continue;
    removed = std::move(*found);
    removed->isActive = false;
    entries.erase(found);
    return;
  }
}

void PreferenceObservers::notify(const std::string& key, const PreferenceChange& change) const {
  Entries entries;
  {
    const std::lock_guard lock(mutex_);
    const auto found = entries_.find(key);
    if (found != entries_.end()) entries = found->second;
  }
  for (const auto& entry : entries)
    if (entry->isActive && (entry->wantsPrior || !change.isPrior)) entry->observer(change);
}

}  // namespace kelvane
