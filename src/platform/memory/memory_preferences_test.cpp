// What every platform's preferences share, on the in-memory ones.
#include "platform/memory/memory_preferences.h"

#include <atomic>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::string describe(const std::optional<PropertyValue>& value) {
  return value ? value->string().value_or("?") : "-";
}

class PreferencesTableTest : public ::testing::Test {
 protected:
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

  MemoryPreferences preferences;
  std::vector<std::string> seen;
};

TEST_F(PreferencesTableTest, DefaultsServeWhileNothingIsStoredAndAreNotStored) {
  preferences.registerDefaults({{"key", "default"}, {"other", 1}});
  preferences.registerDefaults({{"key", "newer"}});
  EXPECT_EQ(preferences.object("key"), PropertyValue("newer"));
  EXPECT_EQ(preferences.object("other"), PropertyValue(1));
  EXPECT_THAT(preferences.stored(), IsEmpty());
  preferences.setObject("key", "stored");
  EXPECT_EQ(preferences.object("key"), PropertyValue("stored"));
  preferences.removeObject("key");
  EXPECT_EQ(preferences.object("key"), PropertyValue("newer"));
  EXPECT_EQ(preferences.object("absent"), std::nullopt);
}

TEST_F(PreferencesTableTest, TellsOldAndNewInTheOrderOfRegistration) {
  preferences.setObject("key", "a");
  observe("plain");
  observe("initial", {.initial = true});
  observe("prior", {.prior = true});
  EXPECT_THAT(take(), ElementsAre("initial: ->a"));
  preferences.setObject("key", "b");
  EXPECT_THAT(take(), ElementsAre("prior: before a>-", "plain: a>b", "initial: a>b", "prior: a>b"));
  preferences.removeObject("key");
  EXPECT_THAT(take(), ElementsAre("prior: before b>-", "plain: b>-", "initial: b>-", "prior: b>-"));
}

TEST_F(PreferencesTableTest, AnEqualValueTellsNobodyButAnExplicitDefaultIsStored) {
  preferences.registerDefaults({{"key", "default"}});
  observe("a", {.prior = true});
  preferences.removeObject("key");
  EXPECT_THAT(take(), IsEmpty());
  preferences.setObject("key", "default");
  EXPECT_THAT(take(), ElementsAre("a: before ->-", "a: ->default"));
  EXPECT_EQ(preferences.stored(), (PropertyDictionary{{"key", "default"}}));
  preferences.setObject("key", "default");
  preferences.setObject("other", "unheard");
  EXPECT_THAT(take(), IsEmpty());
}

TEST_F(PreferencesTableTest, PriorNoticesComeWhileTheOldValueIsStillRead) {
  preferences.setObject("key", "old");
  std::vector<std::string> read;
  const auto id = preferences.addObserver("key", {.prior = true}, [&](const PreferenceChange&) {
    read.push_back(describe(preferences.object("key")));
  });
  preferences.setObject("key", "new");
  EXPECT_THAT(read, ElementsAre("old", "new"));
  preferences.removeObserver(id);
}

TEST_F(PreferencesTableTest, ObserversComeAndGoInsideACallback) {
  PreferenceObserverId victim = 0, self = 0;
  self = preferences.addObserver("key", {}, [&](const PreferenceChange& change) {
    note("self")(change);
    preferences.removeObserver(self);
    preferences.removeObserver(victim);
    observe("added");
  });
  victim = observe("victim");
  preferences.setObject("key", "a");
  EXPECT_THAT(take(), ElementsAre("self: ->a"));
  preferences.setObject("key", "b");
  EXPECT_THAT(take(), ElementsAre("added: a>b"));
}

TEST_F(PreferencesTableTest, AnObserverAddedBeforeAChangeIsMadeHearsOfIt) {
  const auto adder = preferences.addObserver("key", {.prior = true}, [&](const auto& change) {
    if (change.isPrior) observe("added", {.initial = true});
  });
  preferences.setObject("key", "a");
  EXPECT_THAT(take(), ElementsAre("added: ->-", "added: ->a"));
  preferences.removeObserver(adder);
}

TEST_F(PreferencesTableTest, AChangeInsideACallbackIsToldInFull) {
  const auto id = preferences.addObserver("key", {}, [&](const PreferenceChange& change) {
    if (change.newValue == PropertyValue("a")) preferences.setObject("key", "b");
  });
  observe("second");
  preferences.setObject("key", "a");
  EXPECT_THAT(take(), ElementsAre("second: a>b", "second: ->a"));
  EXPECT_EQ(preferences.object("key"), PropertyValue("b"));
  preferences.removeObserver(id);
}

TEST_F(PreferencesTableTest, AnotherProcessIsToldLikeAChangeOfOurs) {
  preferences.setObject("key", "ours");
  observe("a", {.prior = true});
  preferences.changeElsewhere("key", PropertyValue("theirs"));
  EXPECT_THAT(take(), ElementsAre("a: before ours>-", "a: ours>theirs"));
  preferences.changeElsewhere("key", PropertyValue("theirs"));
  EXPECT_THAT(take(), IsEmpty());
  preferences.changeElsewhere("key", std::nullopt);
  EXPECT_THAT(take(), ElementsAre("a: before theirs>-", "a: theirs>-"));
}

TEST_F(PreferencesTableTest, IsSafeFromSeveralThreads) {
  std::atomic<int> calls{0};
  const auto work = [&](const std::string& key) {
    for (int i = 0; i < 500; ++i) {
      const auto id = preferences.addObserver("shared", {.prior = true}, [&](const auto& change) {
        if (!change.isPrior) ++calls;
      });
      preferences.setObject(key, i);
      preferences.setObject("shared", PropertyArray{key.c_str(), i});
      preferences.removeObserver(id);
    }
  };
  std::thread other(work, "a");
  work("b");
  other.join();
  EXPECT_GE(calls, 1000);
  EXPECT_EQ(preferences.object("a"), PropertyValue(499));
  EXPECT_EQ(preferences.object("b"), PropertyValue(499));
}

}  // namespace
}  // namespace kelvane
