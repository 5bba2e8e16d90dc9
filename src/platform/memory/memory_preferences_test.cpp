#include "platform/memory/memory_preferences.h"

#include <atomic>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "platform/portable/preferences_contract_test.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct MemoryStore : PreferencesStore {
  Preferences& preferences() override { return own; }
  std::optional<PropertyValue> stored(const std::string& key) override {
    const auto found = own.stored().find(key);
    return found == own.stored().end() ? std::nullopt : std::optional(found->second);
  }
  void changeElsewhere(const std::string& key, std::optional<PropertyValue> value) override {
    own.changeElsewhere(key, std::move(value));
  }
  MemoryPreferences own;
};
INSTANTIATE_TEST_SUITE_P(Memory, PreferencesContract,
                         ::testing::Values([]() -> std::unique_ptr<PreferencesStore> {
                           return std::make_unique<MemoryStore>();
                         }));

TEST(MemoryPreferences, ADefaultThatIsStoredIsNews) {
  MemoryPreferences preferences;
  preferences.registerDefaults({{"key", "default"}});
  std::vector<std::string> seen;
  const auto id = preferences.addObserver("key", {}, [&](const PreferenceChange& change) {
    seen.push_back((change.oldValue ? "old " : "none ") + change.newValue->string().value_or("?"));
  });
  preferences.removeObject("key");
  EXPECT_THAT(seen, IsEmpty());
  preferences.setObject("key", "default");
  preferences.setObject("key", "default");
  EXPECT_THAT(seen, ElementsAre("none default"));
  preferences.removeObserver(id);
}

TEST(MemoryPreferences, IsSafeFromSeveralThreads) {
  MemoryPreferences preferences;
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
