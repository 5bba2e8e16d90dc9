#include "platform/portable/preference_observers.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kelvane {
namespace {

const PreferenceChange kChange{};
const PreferenceChange kPrior{.isPrior = true};

class PreferenceObserversTest : public testing::Test {
 protected:
  PreferenceObserverId add(const std::string& key, const std::string& name, bool prior = false) {
    return observers_.add(key, prior, [this, name](const PreferenceChange& change) {
      heard_.push_back(name + (change.isPrior ? " prior" : ""));
    });
  }
  PreferenceObservers observers_;
  std::vector<std::string> heard_;
};

TEST_F(PreferenceObserversTest, OrderKeysAndPriorNotices) {
  const auto first = add("level", "first");
  (void)add("level", "second", true);
  (void)add("other", "other", true);
  observers_.notify("level", kPrior);
  observers_.notify("level", kChange);
  observers_.notify("nobody's", kChange);
  EXPECT_EQ(heard_, (std::vector<std::string>{"second prior", "first", "second"}));

  observers_.remove(first);
  observers_.remove(first);
  observers_.notify("level", kChange);
  EXPECT_EQ(heard_.size(), 4U);
  EXPECT_EQ(heard_.back(), "second");
}

TEST_F(PreferenceObserversTest, AddingAndRemovingFromInsideAnObserver) {
  PreferenceObserverId own = 0;
  PreferenceObserverId later = 0;
  own = observers_.add("level", false, [&](const PreferenceChange&) {
    heard_.push_back("own");
    observers_.remove(own);
    observers_.remove(later);
    (void)add("level", "new");
  });
  later = add("level", "later");
  observers_.notify("level", kChange);
  EXPECT_EQ(heard_, std::vector<std::string>{"own"});
  observers_.notify("level", kChange);
  EXPECT_EQ(heard_, (std::vector<std::string>{"own", "new"}));
}

}  // namespace
}  // namespace kelvane
