// The user's preferences as the system keeps them: the application's own domain. Any thread; made
// and destroyed on the main thread.
//
// A registered default counts as the key's value here: observers get it, and hear only of what
// changes a reading. Keys that are observed have no dot in their names: the system would read a
// path.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/preferences.h"

namespace kelvane {

class MacPreferences : public Preferences {
 public:
  MacPreferences();
  ~MacPreferences() override;
  MacPreferences(const MacPreferences&) = delete;
  MacPreferences& operator=(const MacPreferences&) = delete;

  std::optional<PropertyValue> object(const std::string& key) const override;
  // A value with a text that is no UTF-8 can't be stored and changes nothing.
  void setObject(const std::string& key, PropertyValue value) override;
  void removeObject(const std::string& key) override;
  void registerDefaults(const PropertyDictionary& defaults) override;
  [[nodiscard]] PreferenceObserverId addObserver(const std::string& key,
                                                 PreferenceObserverOptions options,
                                                 Observer observer) override;
  void removeObserver(PreferenceObserverId id) override;
  bool synchronize() override;

 private:
  class Impl;
  const std::unique_ptr<Impl> impl_;
};

}  // namespace kelvane
