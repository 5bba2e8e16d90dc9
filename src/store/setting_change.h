// What observers of settings are told. Plain values, any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <set>

#include "platform/preferences.h"
#include "store/bridge.h"

namespace kelvane {

// When an observer is called besides after each change. With both, `prior` is ignored.
struct ObservationOptions {
  bool initial = false;  // once, at registration
  bool prior = false;    // also before each change, with `isPrior`
};

// A change as the platform reports it.
struct BaseChange {
  explicit BaseChange(const PreferenceChange& change)
      : kind(change.kind),
        isPrior(change.isPrior),
        newValue(change.newValue),
        oldValue(change.oldValue) {}

  PreferenceChangeKind kind;
  std::optional<std::set<std::size_t>> indexes;  // of ordered collections: absent for preferences
  bool isPrior;
  std::optional<PropertyValue> newValue;  // as stored
  std::optional<PropertyValue> oldValue;
};

// The same for a key of values V; a value that is absent or unreadable is the key's default.
template <typename V>
struct KeyChange {
  KeyChange(const BaseChange& change, const V& defaultValue)
      : kind(change.kind),
        indexes(change.indexes),
        isPrior(change.isPrior),
        newValue(valueOf(change.newValue, defaultValue)),
        oldValue(valueOf(change.oldValue, defaultValue)) {}

  PreferenceChangeKind kind;
  std::optional<std::set<std::size_t>> indexes;
  bool isPrior;
  V newValue;
  V oldValue;

 private:
  static V valueOf(const std::optional<PropertyValue>& object, const V& defaultValue) {
    return object ? Bridge<V>::deserialize(*object).value_or(defaultValue) : defaultValue;
  }
};

}  // namespace kelvane
