// The per-user preferences store: property-list values by name, with defaults that are not stored.
// Any thread; an observer is called on the thread that made the change, or on the main thread when
// another process made it.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "platform/property_value.h"

namespace kelvane {

// The kinds of a key-value change; preferences only ever send `setting`.
enum class PreferenceChangeKind { setting = 1, insertion = 2, removal = 3, replacement = 4 };

// A platform may take a registered default for the value of a key that is not stored: it then
// stands where a value would be absent, and who stores or removes an equal one is not told of.
struct PreferenceChange {
  PreferenceChangeKind kind = PreferenceChangeKind::setting;
  bool isPrior = false;                   // sent before the change rather than after it
  std::optional<PropertyValue> newValue;  // absent in a prior notice, and when nothing is stored
  std::optional<PropertyValue> oldValue;  // absent in an initial notice, and when nothing was
};

struct PreferenceObserverOptions {
  bool initial = false;  // call once at registration
  bool prior = false;    // call before each change too, with `isPrior`
};

using PreferenceObserverId = std::uint64_t;

class Preferences {
 public:
  using Observer = std::function<void(const PreferenceChange&)>;
  virtual ~Preferences() = default;

  // The stored value, else the registered default, else absent.
  virtual std::optional<PropertyValue> object(const std::string& key) const = 0;

  // Stores or removes. Memory and observers change before the call returns; reaching the disk is
  // the platform's business and never fails here. Storing an equal value changes nothing and tells
  // nobody, but an explicit value equal to the default is stored.
  virtual void setObject(const std::string& key, PropertyValue value) = 0;
  virtual void removeObject(const std::string& key) = 0;

  // Adds to the defaults, which serve while a key is not stored and are never written.
  virtual void registerDefaults(const PropertyDictionary& defaults) = 0;

  // Observers of one key are called in the order of registration. Both may be called from inside an
  // observer: one added there hears the next change, one removed there is not called again.
  [[nodiscard]] virtual PreferenceObserverId addObserver(const std::string& key,
                                                         PreferenceObserverOptions options,
                                                         Observer observer) = 0;
  virtual void removeObserver(PreferenceObserverId id) = 0;

  // Waits until everything set so far has reached the disk. False when it could not be written: the
  // platform has told the user why, the values stay in memory and the next write tries again.
  virtual bool synchronize() = 0;
};

}  // namespace kelvane
