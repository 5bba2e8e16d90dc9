#include "store/observe.h"

#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_preferences.h"
#include "store/propagation.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

// Counts registrations, and how often each is removed.
class CountingPreferences : public MemoryPreferences {
 public:
  PreferenceObserverId addObserver(const std::string& key, PreferenceObserverOptions options,
                                   Observer observer) override {
    ++added;
    return MemoryPreferences::addObserver(key, options, std::move(observer));
  }
  void removeObserver(PreferenceObserverId id) override {
    removed.insert(id);
    MemoryPreferences::removeObserver(id);
  }
  int added = 0;
  std::multiset<PreferenceObserverId> removed;
};

class ObserveTest : public ::testing::Test {
 protected:
  CountingPreferences preferences;
  SettingKey<bool> flag{"flag", true, preferences};
  SettingKey<std::set<double>> levels{"levels", {0.5}, preferences};
  std::vector<std::string> seen;
  std::function<void(const KeyChange<bool>&)> note = [this](const KeyChange<bool>& change) {
    seen.push_back(std::string(change.isPrior ? "before " : "") + (change.oldValue ? "1" : "0") +
                   ">" + (change.newValue ? "1" : "0"));
  };
  std::vector<std::string> take() { return std::exchange(seen, {}); }
};

TEST_F(ObserveTest, AbsentAndUnreadableValuesAreTheDefault) {
  const auto observation = observe(flag, {}, note);
  flag.set(false);
  preferences.setObject("flag", "nonsense");
  preferences.setObject("flag", "false");
  preferences.removeObject("flag");
  EXPECT_THAT(take(), ElementsAre("1>0", "0>1", "1>0", "0>1"));
}

TEST_F(ObserveTest, OptionsAndTheirCombination) {
  flag.set(false);
  const auto told = [&](ObservationOptions options) {
    const auto observation = observe(flag, options, note);
    flag.set(true);
    flag.set(false);
    return take();
  };
  EXPECT_THAT(told({}), ElementsAre("0>1", "1>0"));
  EXPECT_THAT(told({.initial = true}), ElementsAre("1>0", "0>1", "1>0"));
  EXPECT_THAT(told({.prior = true}), ElementsAre("before 0>1", "0>1", "before 1>1", "1>0"));
  EXPECT_THAT(told({.initial = true, .prior = true}), ElementsAre("1>0", "0>1", "1>0"));
}

TEST_F(ObserveTest, ChangesWithoutPropagationAreToldNobodyOnTheirThread) {
  const auto observation = observe(flag, {.prior = true}, note);
  withoutPropagation([&] {
    flag.set(false);
    EXPECT_THAT(take(), IsEmpty());
    std::thread([&] { flag.set(true); }).join();
    EXPECT_THAT(take(), ElementsAre("before 0>1", "0>1"));
  });
  EXPECT_THROW(withoutPropagation([] { throw std::runtime_error("x"); }), std::runtime_error);
  flag.set(false);
  EXPECT_THAT(take(), ElementsAre("before 1>1", "1>0"));
}

TEST_F(ObserveTest, EachEndRemovesTheRegistrationOnce) {
  {
    auto invalidated = observe(flag, {}, note);
    auto moved = observe(flag, {}, note);
    auto assigned = std::move(moved);
    invalidated.invalidate();
    invalidated.invalidate();
    flag.set(false);
    EXPECT_THAT(take(), ElementsAre("1>0"));
    assigned = observe(flag, {}, note);
    flag.set(true);
    EXPECT_THAT(take(), ElementsAre("0>1"));
  }
  flag.set(false);
  EXPECT_THAT(take(), IsEmpty());
  EXPECT_EQ(preferences.added, 3);
  EXPECT_EQ(preferences.removed.size(), 3U);
  EXPECT_EQ(std::set(preferences.removed.begin(), preferences.removed.end()).size(), 3U);
}

TEST_F(ObserveTest, AnObservationMayEndItself) {
  std::optional<UserDefaultsKeyObservation> self;
  self.emplace(observe(flag, {}, [&](const KeyChange<bool>& change) {
    self.reset();
    note(change);
  }));
  flag.set(false);
  flag.set(true);
  EXPECT_THAT(take(), ElementsAre("1>0"));
  EXPECT_EQ(preferences.removed.size(), 1U);
}

TEST_F(ObserveTest, AnObservationEndsWithItsOwner) {
  auto owner = std::make_shared<int>(0);
  auto other = std::make_shared<int>(0);
  {
    const auto owned = observe(flag, {}, note, LifetimeAssociation(owner));
    const auto several = observe(
        {flag, levels}, {}, [&] { seen.push_back("several"); }, LifetimeAssociation(other));
    flag.set(false);
    EXPECT_THAT(take(), ElementsAre("1>0", "several"));
    owner.reset();
    flag.set(true);
    EXPECT_THAT(take(), ElementsAre("several"));
    other.reset();
    flag.set(false);
    levels.set({});
    EXPECT_THAT(take(), IsEmpty());
    EXPECT_EQ(preferences.removed.size(), 3U);
  }
  EXPECT_EQ(preferences.removed.size(), 3U);

  const auto tooLate = observe(flag, {.initial = true}, note, LifetimeAssociation(owner));
  EXPECT_THAT(take(), IsEmpty());
  EXPECT_EQ(preferences.removed.size(), 4U);
}

TEST_F(ObserveTest, SeveralKeysShareOneHandler) {
  int calls = 0;
  auto observation = observe({flag, levels}, {.initial = true}, [&] { ++calls; });
  EXPECT_EQ(calls, 2);
  flag.set(false);
  levels.set({0.1});
  levels.set({0.1});
  EXPECT_EQ(calls, 4);
  observation.invalidate();
  flag.set(true);
  levels.set({});
  EXPECT_EQ(calls, 4);
  EXPECT_EQ(preferences.removed.size(), 2U);
}

TEST_F(ObserveTest, PublishersObserveForEachSubscriberUntilItLeaves) {
  const auto changes = publisher(flag, {.initial = true});
  EXPECT_EQ(preferences.added, 0);
  auto first = changes.subscribe(note);
  auto second = changes.dropFirst().subscribe(note);
  EXPECT_THAT(take(), ElementsAre("1>1"));
  flag.set(false);
  EXPECT_THAT(take(), ElementsAre("1>0", "1>0"));
  first.cancel();
  flag.set(true);
  EXPECT_THAT(take(), ElementsAre("0>1"));

  int events = 0;
  auto several = publisher({flag, levels}, {}).subscribe([&](const auto&) { ++events; });
  levels.set({});
  flag.set(false);
  several.cancel();
  flag.set(true);
  EXPECT_EQ(events, 2);
}

}  // namespace
}  // namespace kelvane
