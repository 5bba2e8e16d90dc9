// Settings as views see them: observables, properties and toggles.
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_preferences.h"
#include "platform/memory/memory_run_loop.h"
#include "store/propagation.h"
#include "store/setting_property.h"
#include "store/setting_toggle.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SettingViewsTest : public ::testing::Test {
 protected:
  // Notes the value that a view reads when it is told to redraw.
  template <typename Observable>
  Subscription watch(const Observable& observable) {
    return observable.objectWillChange().subscribe(
        [&](const auto&) { seen.push_back(flag.get()); });
  }
  MemoryPreferences preferences;
  MemoryRunLoop loop;
  SettingKey<bool> flag{"flag", true, preferences};
  std::vector<bool> seen;
};

TEST_F(SettingViewsTest, ViewsAreToldOncePerChangeAndBeforeIt) {
  const SettingProperty<bool> property(flag, loop);
  const auto subscription = watch(property.observable());
  EXPECT_THAT(seen, IsEmpty());
  property.set(false);
  EXPECT_THAT(seen, ElementsAre(true));
  EXPECT_FALSE(property.get());
  flag.set(true);
  EXPECT_THAT(seen, ElementsAre(true, false));
}

TEST_F(SettingViewsTest, AnotherThreadsChangeIsToldOnTheMainQueue) {
  std::optional<SettingObservable<bool>> observable(std::in_place, flag, loop);
  const auto subscription = watch(*observable);
  std::thread([&] { flag.set(false); }).join();
  EXPECT_THAT(seen, IsEmpty());
  loop.run();
  EXPECT_THAT(seen, ElementsAre(false));

  std::thread([&] { flag.set(true); }).join();
  observable.reset();
  loop.run();
  EXPECT_THAT(seen, ElementsAre(false));
}

TEST_F(SettingViewsTest, ToggleShowsAndWritesItsKeyAndTellsEachNewValue) {
  std::vector<bool> changes;
  const SettingToggle toggle("Large icon", flag, loop, [&](bool isOn) {
    EXPECT_EQ(flag.get(), isOn);
    changes.push_back(isOn);
  });
  const SettingToggle silent("Large icon", flag, loop);
  EXPECT_EQ(toggle.label(), "Large icon");
  EXPECT_TRUE(toggle.isOn());
  toggle.setOn(true);
  EXPECT_THAT(changes, IsEmpty()) << "it was on already";
  silent.setOn(false);
  EXPECT_FALSE(toggle.isOn());
  preferences.changeElsewhere("flag", std::nullopt);
  withoutPropagation([&] { flag.set(false); });
  EXPECT_THAT(changes, ElementsAre(false, true));
}

}  // namespace
}  // namespace kelvane
