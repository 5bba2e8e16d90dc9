// What the preferences of every platform do alike. A test of a platform's preferences includes this
// and instantiates it with what makes them.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/preferences.h"

namespace kelvane {

// Preferences of a platform, nothing stored, and what is behind them.
struct PreferencesStore {
  virtual ~PreferencesStore() = default;
  virtual Preferences& preferences() = 0;
  virtual std::optional<PropertyValue> stored(const std::string& key) = 0;
  // Another process stores `value`, or removes what is stored when absent.
  virtual void changeElsewhere(const std::string& key, std::optional<PropertyValue> value) = 0;
};
using MakePreferencesStore = std::unique_ptr<PreferencesStore> (*)();

class PreferencesContract : public ::testing::TestWithParam<MakePreferencesStore> {
 protected:
  static std::string describe(const std::optional<PropertyValue>& value) {
    return value ? value->string().value_or("?") : "-";
  }
  // Notes each notice as "who: old>new", a prior one with "before".
  Preferences::Observer note(const std::string& who) {
    return [this, who](const PreferenceChange& change) {
      seen.push_back(who + (change.isPrior ? ": before " : ": ") + describe(change.oldValue) + ">" +
                     describe(change.newValue));
    };
  }
  PreferenceObserverId observe(const std::string& who, PreferenceObserverOptions options = {}) {
    return preferences.addObserver("key", options, note(who));
  }
  std::vector<std::string> take() { return std::exchange(seen, {}); }

  const std::unique_ptr<PreferencesStore> store = GetParam()();
  Preferences& preferences = store->preferences();
  std::vector<std::string> seen;
};

TEST_P(PreferencesContract, DefaultsServeWhileNothingIsStoredAndAreNotStored) {
  const PropertyArray levels{0.2, 0.1};
  preferences.registerDefaults({{"key", "default"}, {"levels", levels}});
  preferences.registerDefaults({{"key", "newer"}});
  EXPECT_EQ(preferences.object("key"), PropertyValue("newer"));
  EXPECT_EQ(preferences.object("levels"), PropertyValue(levels));
  EXPECT_EQ(store->stored("key"), std::nullopt);
  preferences.setObject("key", "newer");
  EXPECT_EQ(store->stored("key"), PropertyValue("newer")) << "an explicit default is stored";
  preferences.setObject("key", true);
  EXPECT_EQ(preferences.object("key"), PropertyValue(true));
  preferences.removeObject("key");
  EXPECT_EQ(preferences.object("key"), PropertyValue("newer"));
  EXPECT_EQ(store->stored("key"), std::nullopt);
  EXPECT_EQ(preferences.object("absent"), std::nullopt);
}

TEST_P(PreferencesContract, TellsOldAndNewInTheOrderOfRegistration) {
  preferences.setObject("key", "a");
  observe("plain");
  observe("initial", {.initial = true});
  observe("prior", {.prior = true});
  EXPECT_THAT(take(), ::testing::ElementsAre("initial: ->a"));
  preferences.setObject("key", "b");
  EXPECT_THAT(take(), ::testing::ElementsAre("prior: before a>-", "plain: a>b", "initial: a>b",
                                             "prior: a>b"));
  preferences.setObject("key", "b");
  EXPECT_THAT(take(), ::testing::IsEmpty());
  preferences.removeObject("key");
  EXPECT_THAT(take(), ::testing::ElementsAre("prior: before b>-", "plain: b>-", "initial: b>-",
                                             "prior: b>-"));
  preferences.removeObject("key");
  preferences.setObject("other", "unheard");
  EXPECT_THAT(take(), ::testing::IsEmpty());
}

TEST_P(PreferencesContract, PriorNoticesComeWhileTheOldValueIsStillRead) {
  preferences.setObject("key", "old");
  std::vector<std::string> read;
  const auto id = preferences.addObserver("key", {.prior = true}, [&](const PreferenceChange&) {
    read.push_back(describe(preferences.object("key")));
  });
  preferences.setObject("key", "new");
  EXPECT_THAT(read, ::testing::ElementsAre("old", "new"));
  preferences.removeObserver(id);
}

TEST_P(PreferencesContract, ObserversComeAndGoInsideACallback) {
  PreferenceObserverId victim = 0, self = 0;
  self = preferences.addObserver("key", {}, [&](const PreferenceChange& change) {
    note("self")(change);
    preferences.removeObserver(self);
    preferences.removeObserver(victim);
    observe("added");
  });
  victim = observe("victim");
  preferences.setObject("key", "a");
  EXPECT_THAT(take(), ::testing::ElementsAre("self: ->a"));
  preferences.setObject("key", "b");
  EXPECT_THAT(take(), ::testing::ElementsAre("added: a>b"));
}

TEST_P(PreferencesContract, AnObserverAddedBeforeAChangeIsMadeHearsOfIt) {
  const auto adder = preferences.addObserver("key", {.prior = true}, [&](const auto& change) {
    if (change.isPrior) observe("added", {.initial = true});
  });
  preferences.setObject("key", "a");
  EXPECT_THAT(take(), ::testing::ElementsAre("added: ->-", "added: ->a"));
  preferences.removeObserver(adder);
}

TEST_P(PreferencesContract, AChangeInsideACallbackIsToldInFull) {
  const auto id = preferences.addObserver("key", {}, [&](const PreferenceChange& change) {
    if (change.newValue == PropertyValue("a")) preferences.setObject("key", "b");
  });
  observe("second");
  preferences.setObject("key", "a");
  EXPECT_THAT(take(), ::testing::ElementsAre("second: a>b", "second: ->a"));
  EXPECT_EQ(preferences.object("key"), PropertyValue("b"));
  preferences.removeObserver(id);
}

TEST_P(PreferencesContract, AnotherProcessIsToldLikeAChangeOfOurs) {
  preferences.setObject("key", "ours");
  observe("a", {.prior = true});
  store->changeElsewhere("key", PropertyValue("theirs"));
  EXPECT_THAT(take(), ::testing::ElementsAre("a: before ours>-", "a: ours>theirs"));
  store->changeElsewhere("key", PropertyValue("theirs"));
  EXPECT_THAT(take(), ::testing::IsEmpty());
  store->changeElsewhere("key", std::nullopt);
  EXPECT_THAT(take(), ::testing::ElementsAre("a: before theirs>-", "a: theirs>-"));
}

}  // namespace kelvane
