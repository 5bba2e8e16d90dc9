// Running observations of preferences. Each ends when it is invalidated or destroyed, or with the
// owner it is associated with; its registration is then removed once.
//
// A callback runs on the thread that made the change, unless that thread is inside
// `withoutPropagation`: then it is not called. It may end its own observation. The preferences
// outlive the observation.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "store/lifetime_association.h"
#include "store/setting_change.h"
#include "store/setting_key.h"

namespace kelvane {

class UserDefaultsKeyObservation {
 public:
  using Callback = std::function<void(const BaseChange&)>;

  // Starts at once; with `initial` the callback runs before this returns. Once the associated owner
  // is gone the callback is not called, and the next change removes the registration.
  UserDefaultsKeyObservation(Preferences& object, const std::string& key,
                             ObservationOptions options, Callback callback,
                             LifetimeAssociation lifetimeAssociation = {});
  ~UserDefaultsKeyObservation();
  UserDefaultsKeyObservation(UserDefaultsKeyObservation&& other) noexcept;
  UserDefaultsKeyObservation& operator=(UserDefaultsKeyObservation&& other) noexcept;

  // Nothing when it has ended already.
  void invalidate();

 private:
  class Registration;
  std::shared_ptr<Registration> registration_;
};

// One callback for changes of any of several preferences.
class CompositeUserDefaultsKeyObservation {
 public:
  using Callback = std::function<void()>;

  // As above; with `initial` the callback runs once for each of them.
  CompositeUserDefaultsKeyObservation(const std::vector<SuiteKeyPair>& observables,
                                      ObservationOptions options, const Callback& callback,
                                      const LifetimeAssociation& lifetimeAssociation = {});
  void invalidate();

 private:
  std::vector<UserDefaultsKeyObservation> observations_;
};

}  // namespace kelvane
