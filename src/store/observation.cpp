#include "store/observation.h"

#include <mutex>
#include <optional>
#include <utility>

#include "store/propagation.h"

namespace kelvane {

// The observer known to the preferences. It may be ended before `addObserver` has returned its id:
// by an initial call, or by another thread's change.
class UserDefaultsKeyObservation::Registration {
 public:
  Registration(Preferences& object, Callback callback, LifetimeAssociation lifetimeAssociation)
      : object_(object),
        callback_(std::move(callback)),
        lifetimeAssociation_(std::move(lifetimeAssociation)) {}

  void changed(const PreferenceChange& change) {
    if (isUpdatingValues() || hasEnded()) return;
    if (!lifetimeAssociation_.runWhileAlive([&] { callback_(BaseChange(change)); })) end();
  }

  void hasId(PreferenceObserverId id) {
    {
      const std::lock_guard lock(mutex_);
      if (!hasEnded_) {
        id_ = id;
        return;
      }
    }
    object_.removeObserver(id);
  }

  void end() {
    std::optional<PreferenceObserverId> id;
    {
      const std::lock_guard lock(mutex_);
      hasEnded_ = true;
      id = std::exchange(id_, std::nullopt);
    }
    if (id) object_.removeObserver(*id);
  }

 private:
  bool hasEnded() {
    const std::lock_guard lock(mutex_);
    return hasEnded_;
  }

  Preferences& object_;
  const Callback callback_;
  const LifetimeAssociation lifetimeAssociation_;
  std::mutex mutex_;
  std::optional<PreferenceObserverId> id_;
  bool hasEnded_ = false;
};

UserDefaultsKeyObservation::UserDefaultsKeyObservation(Preferences& object, const std::string& key,
                                                       ObservationOptions options,
                                                       Callback callback,
                                                       LifetimeAssociation lifetimeAssociation)
    : registration_(std::make_shared<Registration>(object, std::move(callback),
                                                   std::move(lifetimeAssociation))) {
  const PreferenceObserverOptions asked{.initial = options.initial,
                                        .prior = options.prior && !options.initial};
  registration_->hasId(object.addObserver(
      key, asked, [registration = registration_](const PreferenceChange& change) {
        registration->changed(change);
      }));
}

UserDefaultsKeyObservation::~UserDefaultsKeyObservation() { invalidate(); }

UserDefaultsKeyObservation::UserDefaultsKeyObservation(
    UserDefaultsKeyObservation&& other) noexcept = default;

UserDefaultsKeyObservation& UserDefaultsKeyObservation::operator=(
    UserDefaultsKeyObservation&& other) noexcept {
  if (this != &other) {
    invalidate();
    registration_ = std::move(other.registration_);
  }
  return *this;
}

void UserDefaultsKeyObservation::invalidate() {
  if (const auto ended = std::exchange(registration_, nullptr)) ended->end();
}

CompositeUserDefaultsKeyObservation::CompositeUserDefaultsKeyObservation(
    const std::vector<SuiteKeyPair>& observables, ObservationOptions options,
    const Callback& callback, const LifetimeAssociation& lifetimeAssociation) {
  observations_.reserve(observables.size());
  for (const auto& [suite, key] : observables)
    observations_.emplace_back(
        suite, key, options, [callback](const BaseChange&) { callback(); }, lifetimeAssociation);
}

void CompositeUserDefaultsKeyObservation::invalidate() { observations_.clear(); }

}  // namespace kelvane
