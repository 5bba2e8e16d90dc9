// The observers of preference keys, for a platform that tells its changes through one channel per
// key. Any thread.
//
// No lock is held while an observer runs, so it may call back. An observer removed on another
// thread than the one it is running on may finish its call after that.
#pragma once

#include <atomic>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/preferences.h"

namespace kelvane {

class PreferenceObservers {
 public:
  [[nodiscard]] PreferenceObserverId add(const std::string& key, bool wantsPrior,
                                         Preferences::Observer observer);
  // An id that is unknown is nothing.
  void remove(PreferenceObserverId id);

  // Tells the observers that the key has now, in the order they were added; a prior notice only
  // those that asked for it.
  void notify(const std::string& key, const PreferenceChange& change) const;

 private:
  struct Entry {
    PreferenceObserverId id;
    bool wantsPrior;
    Preferences::Observer observer;
    std::atomic<bool> isActive{true};
  };
  using Entries = std::vector<std::shared_ptr<Entry>>;

  mutable std::mutex mutex_;
  std::map<std::string, Entries> entries_;
  PreferenceObserverId lastId_ = 0;
};

}  // namespace kelvane
