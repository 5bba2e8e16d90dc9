// Observing settings by callback and by publisher. Options, threads and lifetimes are those of
// `store/observation.h`; publishers belong to the main thread.
#pragma once

#include <functional>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

#include "reactive/publisher.h"
#include "store/observation.h"

namespace kelvane {

template <typename V>
[[nodiscard]] UserDefaultsKeyObservation observe(
    const SettingKey<V>& key, ObservationOptions options,
    std::type_identity_t<std::function<void(const KeyChange<V>&)>> handler,
    LifetimeAssociation lifetimeAssociation = {}) {
  return UserDefaultsKeyObservation(
      key.suite(), key.name(), options,
      [defaultValue = key.defaultValue(), handler = std::move(handler)](const BaseChange& change) {
        handler(KeyChange<V>(change, defaultValue));
      },
      std::move(lifetimeAssociation));
}

// One handler for several keys: it learns that one of them changed, not which.
[[nodiscard]] inline CompositeUserDefaultsKeyObservation observe(
    const std::vector<SuiteKeyPair>& keys, ObservationOptions options,
    const std::function<void()>& handler, const LifetimeAssociation& lifetimeAssociation = {}) {
  return CompositeUserDefaultsKeyObservation(keys, options, handler, lifetimeAssociation);
}

// Each subscriber has an observation of its own, which ends with its subscription; with `initial`
// it is called before `subscribe` returns. The key outlives subscribing, not the subscriptions.
template <typename V>
Publisher<KeyChange<V>> publisher(const SettingKey<V>& key, ObservationOptions options) {
  return Publisher<KeyChange<V>>(
      [&key, options](typename Publisher<KeyChange<V>>::Handler handler) {
        return Subscription::keeping(observe(key, options, std::move(handler)));
      });
}

// A bare event for each change of any of the keys.
using SettingsChanged = std::monostate;
inline Publisher<SettingsChanged> publisher(std::vector<SuiteKeyPair> keys,
                                            ObservationOptions options) {
  return Publisher<SettingsChanged>(
      [keys = std::move(keys), options](Publisher<SettingsChanged>::Handler handler) {
        return Subscription::keeping(
            observe(keys, options, [handler = std::move(handler)] { handler(SettingsChanged{}); }));
      });
}

}  // namespace kelvane
