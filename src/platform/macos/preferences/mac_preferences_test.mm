#include "platform/macos/preferences/mac_preferences.h"

#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <doubles/doubles.h>

#include "platform/macos/foundation/property_objects.h"
#include "platform/macos/foundation/strings.h"
#include "platform/macos/preferences/preference_change.h"
#include "platform/portable/preferences_contract_test.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct MacStore : PreferencesStore {
  Preferences& preferences() override { return own; }
  std::optional<PropertyValue> stored(const std::string& key) override {
    return propertyValueOf(doubles::storedPreference(nsString(key)));
  }
  void changeElsewhere(const std::string& key, std::optional<PropertyValue> value) override {
    doubles::changePreferenceElsewhere(nsString(key), value ? objectOf(*value) : nil);
  }
  MacPreferences own;
};
INSTANTIATE_TEST_SUITE_P(Mac, PreferencesContract,
                         ::testing::Values([]() -> std::unique_ptr<PreferencesStore> {
                           return std::make_unique<MacStore>();
                         }));

std::string describe(const std::optional<PropertyValue>& value) {
  return value ? value->string().value_or("?") : "-";
}

class MacPreferencesTest : public ::testing::Test {
 protected:
  PreferenceObserverId observe(const std::string& who, PreferenceObserverOptions options = {}) {
    return preferences.addObserver("key", options, [this, who](const PreferenceChange& change) {
      seen.push_back(who + (change.isPrior ? ": before " : ": ") + describe(change.oldValue) + ">" +
                     describe(change.newValue));
    });
  }
  std::vector<std::string> take() { return std::exchange(seen, {}); }

  MacPreferences preferences;
  std::vector<std::string> seen;
};

TEST_F(MacPreferencesTest, ADefaultIsTheValueOfWhatIsNotStored) {
  preferences.setObject("key", "b");
  observe("a", {.prior = true});
  preferences.registerDefaults({{"key", "default"}});
  preferences.removeObject("key");
  preferences.removeObject("key");
  preferences.setObject("key", "default");
  EXPECT_THAT(take(), ElementsAre("a: before b>-", "a: b>default"));
}

TEST_F(MacPreferencesTest, OneObservationOfTheSystemForEachKeyAndNoneAfterwards) {
  {
    MacPreferences brief;
    const auto first = brief.addObserver("key", {}, [](const auto&) {});
    const auto second = brief.addObserver("key", {.prior = true}, [](const auto&) {});
    const auto other = brief.addObserver("other", {}, [](const auto&) {});
    EXPECT_EQ(doubles::observations(), 2);
    for (const auto id : {first, second, other, second}) brief.removeObserver(id);
  }
  EXPECT_EQ(doubles::observations(), 0);
}

TEST_F(MacPreferencesTest, AChangeIsToldOnTheThreadThatMadeIt) {
  std::thread::id told;
  const auto id =
      preferences.addObserver("key", {}, [&](const auto&) { told = std::this_thread::get_id(); });
  std::thread::id own;
  std::thread([&] {
    own = std::this_thread::get_id();
    preferences.setObject("key", "a");
  }).join();
  EXPECT_EQ(told, own);
  preferences.removeObserver(id);
}

TEST_F(MacPreferencesTest, AnotherProcesssChangeIsToldOnTheMainThread) {
  observe("a", {.prior = true});
  doubles::changePreferenceElsewhere(@"key", @"here");
  EXPECT_THAT(take(), ElementsAre("a: before ->-", "a: ->here"));
  std::thread([] { doubles::changePreferenceElsewhere(@"key", @"there"); }).join();
  EXPECT_THAT(take(), IsEmpty());
  doubles::runFor(0);
  EXPECT_THAT(take(), ElementsAre("a: before here>-", "a: here>there"));
}

TEST_F(MacPreferencesTest, AChangeThatIsStillOnItsWayOutlivesThePreferences) {
  {
    MacPreferences brief;
    const auto id = brief.addObserver("key", {}, [](const auto&) { FAIL() << "gone by then"; });
    std::thread([] { doubles::changePreferenceElsewhere(@"key", @"there"); }).join();
    EXPECT_NE(id, 0U);
  }
  doubles::runFor(0);
}

TEST_F(MacPreferencesTest, TextsThatAreNoUtf8ChangeNothing) {
  const std::string bad = "\xff";
  preferences.setObject("key", "kept");
  preferences.setObject("key", bad);
  preferences.setObject(bad, "value");
  preferences.removeObject(bad);
  preferences.registerDefaults({{"key", "default"}, {"bad", bad}});
  EXPECT_EQ(preferences.addObserver(bad, {}, [](const auto&) {}), 1U);
  EXPECT_EQ(preferences.object("key"), PropertyValue("kept"));
  EXPECT_EQ(preferences.object(bad), std::nullopt);
  EXPECT_EQ(doubles::observations(), 0);
}

TEST(PreferenceChange, KindsAndAbsentValues) {
  for (const int kind : {1, 2, 3, 4})
    EXPECT_EQ(static_cast<int>(preferenceChangeOf(
                                   @{NSKeyValueChangeKindKey : @(kind)})
                                   .kind),
              kind);
  const PreferenceChange change = preferenceChangeOf(
      @{NSKeyValueChangeOldKey : [NSNull null],
        NSKeyValueChangeNewKey : @1.5});
  EXPECT_EQ(change.oldValue, std::nullopt);
  EXPECT_EQ(change.newValue, PropertyValue(1.5));
  EXPECT_EQ(preferenceChangeOf(nil).kind, PreferenceChangeKind::setting);
}

}  // namespace
}  // namespace kelvane
