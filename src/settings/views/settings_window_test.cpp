// The settings window from opening to closing.
#include <memory>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "settings/views/settings_window_fixture_test.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Kind = ViewNode::Kind;

TEST_F(SettingsWindowTest, EachControlWritesItsKeyAtOnceAndShowsWhatElseWritesIt) {
  struct Row {
    std::string label;
    const SettingKey<bool>& key;
    int on = 1;  // the control's value for true
    bool textOnly = false;
  };
  const Row rows[] = {{"Notify when fully charged", settings.notifyWhenFullyCharged},
                      {"Show:", settings.showPercentage, 0},
                      {"Type:", settings.textOnlyIcon, 0},
                      {"Small text size", settings.smallMenuBarText, 1, true},
                      {"Large icon", settings.largeIcon},
                      {"Alternative icon style", settings.oldIconStyle},
                      {"Show percentage sign", settings.showPercentageSignInIcon},
                      {"Show time remaining on hover", settings.showTimeOrPercentageOnHover},
                      {"Hide while on power", settings.hideIconWhenOnPower}};
  window->show();
  for (const auto& [label, key, on, textOnly] : rows) {
    settings.textOnlyIcon.set(textOnly);
    const auto shows = [&, text = label, whenOn = on] {
      const auto node = labelled(text);
      return node && (node->isOn ? *node->isOn : *node->selection == whenOn);
    };
    const bool before = key.get();
    EXPECT_EQ(shows(), before) << label;
    PropertyDictionary expected = preferences.stored();
    act(label, before ? 1 - on : on);
    expected.insert_or_assign(key.name(), !before);
    EXPECT_EQ(preferences.stored(), expected) << label;
    EXPECT_EQ(shows(), !before) << label;
    preferences.changeElsewhere(key.name(), before);
    EXPECT_EQ(shows(), before) << label;
  }
}

TEST_F(SettingsWindowTest, AChangeTouchesNoMoreThanItMust) {
  window->show();
  EXPECT_THAT(changes(), IsEmpty());
  act("Show:", 1);
  EXPECT_THAT(changes(), ElementsAre("remove showPercentageSignInIcon",
                                     "set Show:", "set Show percentage on hover"));
  EXPECT_FALSE(preferences.stored().contains("showTimeOrPercentageOnHover"));
  act("Type:", 0);
  EXPECT_THAT(changes(), ElementsAre("remove largeIcon", "remove oldIconStyle",
                                     "set Type:", "insert Small text size"));
  // Several changes of one turn are one; one that is taken back is none.
  settings.smallMenuBarText.set(false);
  settings.notifyWhenFullyCharged.set(true);
  settings.smallMenuBarText.set(true);
  EXPECT_THAT(changes(), ElementsAre("set Notify when fully charged"));
  // What isn't shown isn't followed.
  settings.largeIcon.set(true);
  settings.notifyAtPercentagesOnPower.set({0.5});
  EXPECT_THAT(changes(), IsEmpty());
}

TEST_F(SettingsWindowTest, LevelsAreChosenInASheet) {
  window->show();
  const auto id = [](const std::string& column, int i) {
    return "settings/general/form/stack/notifyAtPercentages/sheet/columns/" + column + "/levels/" +
           std::to_string(i);
  };
  const auto tick = [&](const std::string& column, int i, int value) {
    shown().events.acted(id(column, i), id(column, i), value);
  };
  tick("onBattery", 0, 1);
  EXPECT_THAT(settings.notifyAtPercentagesOnBattery.get(), IsEmpty()) << "the sheet is closed";

  act("Notify at percentages…");
  ASSERT_TRUE(ofKind(Kind::sheet));
  tick("onBattery", 12, 1);
  tick("onBattery", 3, 1);
  EXPECT_EQ(settings.notifyAtPercentagesOnBattery.get(), (Levels{0.2, 0.77}));
  EXPECT_EQ(settings.notifyAtPercentagesOnPower.get(), Levels{});
  tick("onBattery", 3, 0);
  tick("onPower", 16, 1);
  EXPECT_EQ(settings.notifyAtPercentagesOnBattery.get(), Levels{0.77});
  EXPECT_EQ(settings.notifyAtPercentagesOnPower.get(), Levels{0.97});
  changes();
  preferences.changeElsewhere("notifyAtPercentagesOnPower", PropertyArray{0.1});
  EXPECT_THAT(changes(), ElementsAre("set 10﹪", "set 97﹪"));

  act("Done");
  EXPECT_FALSE(ofKind(Kind::sheet));
  act("Notify at percentages…");
  act(ofKind(Kind::sheet).value());
  EXPECT_FALSE(ofKind(Kind::sheet)) << "dismissed by Escape";
}

TEST_F(SettingsWindowTest, HidingWarnsAndAppliesTheRule) {
  window->show();
  act("Hide while on power", 1);
  EXPECT_THAT(visibility, ElementsAre("hide")) << "at once";
  const auto alert = ofKind(Kind::alert).value();
  EXPECT_EQ(alert.label, "Kelvane will be hidden while the power adapter is connected.");
  EXPECT_EQ(alert.children.size(), 1U) << "the message, and the platform's own button";
  act(alert);
  EXPECT_FALSE(ofKind(Kind::alert));
  EXPECT_TRUE(settings.hideIconWhenOnPower.get());

  act("Hide while on power", 1);
  EXPECT_EQ(visibility.size(), 1U) << "nothing changed";
  act("Hide while on power", 0);
  EXPECT_FALSE(ofKind(Kind::alert));
  EXPECT_THAT(visibility, ElementsAre("hide", "show"));
  act("Hide while on power", 1);
  EXPECT_TRUE(ofKind(Kind::alert));
}

TEST_F(SettingsWindowTest, LaunchAtLoginShowsWhatThePlatformSays) {
  window->show();
  for (const bool isOn : {true, false}) {
    act("Launch at login", isOn ? 1 : 0);
    EXPECT_EQ(autoStart.isEnabled(), isOn);
    EXPECT_THAT(changes(), ElementsAre("set Launch at login"));
    EXPECT_EQ(labelled("Launch at login")->isOn, isOn);
  }
  autoStart.setEnabled(true);
  EXPECT_THAT(changes(), ElementsAre("set Launch at login"));
  loginItems.refuses = true;
  act("Launch at login", 0);
  EXPECT_THAT(changes(), IsEmpty());
  loginItems.refuses = false;
  loginItems.setEnabled(autoStart.helperIdentifier(), false);
  window->show();
  EXPECT_THAT(changes(), ElementsAre("set Launch at login"));
}

TEST_F(SettingsWindowTest, HostileEventsChangeNothing) {
  window->show();
  const PropertyDictionary before = preferences.stored();
  const ViewNode large = labelled("Large icon").value();
  const ViewNode show = labelled("Show:").value();
  const ViewNode hover = labelled("Show time remaining on hover").value();
  const auto& acted = shown().events.acted;
  acted("", "", 0);
  acted("quit", "quit", 1);
  acted(large.action, hover.id, 1);
  acted(large.id + "/", large.id + "/", 1);
  for (const int value : {-1, 2, 1 << 30}) {
    acted(large.action, large.id, value);
    acted(show.action, show.id, value);
  }
  settings.textOnlyIcon.set(true);
  loop.run();
  acted(large.action, large.id, 1);
  settings.textOnlyIcon.set(false);
  PropertyDictionary expected = before;
  expected.insert_or_assign("textOnlyIcon", false);
  EXPECT_EQ(preferences.stored(), expected);
}

TEST_F(SettingsWindowTest, OpensOnceAndForgetsItsStateWhenClosed) {
  windows.canShowWindows = false;
  window->show();
  windows.canShowWindows = true;
  window->show();
  window->show();
  ASSERT_EQ(windows.windows.size(), 1U);
  EXPECT_EQ(shown().title, "Kelvane Settings");
  EXPECT_EQ(shown().timesInFront, 1);

  act("Notify at percentages…");
  act("Hide while on power", 1);
  const ViewNode done = labelled("Done").value();
  const auto old = windows.windows.back();
  const std::size_t steps = old->steps.size();
  settings.largeIcon.set(true);
  old->events.closed();
  old->events.closed();
  old->events.acted(done.action, done.id, 0);
  EXPECT_TRUE(old->isOpen) << "not inside its own call";
  loop.run();
  EXPECT_FALSE(old->isOpen);
  EXPECT_EQ(old->steps.size(), steps);
  settings.hideIconWhenOnPower.set(false);
  EXPECT_EQ(visibility.size(), 1U) << "nobody listens any more";

  window->show();
  ASSERT_EQ(windows.windows.size(), 2U);
  EXPECT_FALSE(ofKind(Kind::sheet));
  EXPECT_FALSE(ofKind(Kind::alert));
  EXPECT_TRUE(labelled("Large icon")->isOn.value());
  old->events.closed();
  act("Large icon", 0);
  EXPECT_FALSE(settings.largeIcon.get());

  settings.largeIcon.set(true);
  window.reset();
  EXPECT_FALSE(shown().isOpen);
  loop.run();
  shown().events.acted("settings", "settings", 0);
  shown().events.closed();
}

}  // namespace
}  // namespace kelvane
