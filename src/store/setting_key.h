// A typed setting: the name of a preference, its type and its default. Any thread; a key outlives
// what reads it, and its suite outlives the key.
#pragma once

#include <string>
#include <utility>

#include "platform/preferences.h"
#include "store/bridge.h"

namespace kelvane {

// A preference without its type, for observing several of them together.
struct SuiteKeyPair {
  Preferences& suite;
  std::string key;
};

template <typename V>
class SettingKey {
 public:
  // Registers the default with the suite, so that readers which bypass the key see it too; an empty
  // optional registers nothing.
  SettingKey(std::string name, V defaultValue, Preferences& suite)
      : name_(std::move(name)), defaultValue_(std::move(defaultValue)), suite_(suite) {
    if (auto object = Bridge<V>::serialize(defaultValue_))
      suite_.registerDefaults({{name_, *std::move(object)}});
  }
  SettingKey(const SettingKey&) = delete;
  SettingKey& operator=(const SettingKey&) = delete;

  const std::string& name() const { return name_; }
  const V& defaultValue() const { return defaultValue_; }
  Preferences& suite() const { return suite_; }

  // The stored value; the default when there is none or it is unreadable.
  V get() const {
    const auto object = suite_.object(name_);
    if (!object) return defaultValue_;
    return Bridge<V>::deserialize(*object).value_or(defaultValue_);
  }

  // Takes effect at once; an empty optional removes what is stored.
  void set(const V& value) const {
    if (auto object = Bridge<V>::serialize(value)) {
      suite_.setObject(name_, *std::move(object));
    } else {
      suite_.removeObject(name_);
    }
  }

  operator SuiteKeyPair() const {  // NOLINT(google-explicit-constructor)
    return {suite_, name_};
  }

 private:
  const std::string name_;
  const V defaultValue_;
  Preferences& suite_;
};

}  // namespace kelvane
