#include "kit/auto_start.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_desktop.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;

constexpr const char* kHelper = "org.kelvane.Kelvane-AutoStartHelper";

class AutoStartTest : public ::testing::Test {
 protected:
  MemoryLoginItems loginItems;
  AutoStart autoStart{loginItems, "org.kelvane.Kelvane"};
};

TEST_F(AutoStartTest, ReadsTheFirstJobOfTheHelper) {
  const PropertyDictionary on = {{"Label", kHelper}, {"OnDemand", true}};
  const PropertyDictionary off = {{"Label", kHelper}, {"OnDemand", false}};
  const std::pair<std::optional<std::vector<PropertyDictionary>>, bool> rows[] = {
      {std::nullopt, false},
      {{{}}, false},
      {{{on}}, true},
      {{{off}}, false},
      {{{off, on}}, false},
      {{{on, off}}, true},
      {{{{{"Label", kHelper}}}}, false},
      {{{{{"Label", kHelper}}, on}}, false},
      {{{{{"Label", kHelper}, {"OnDemand", 1}}}}, false},
      {{{{{"Label", kHelper}, {"OnDemand", "true"}}}}, false},
      {{{{{"Label", "org.kelvane.kelvane-AutoStartHelper"}, {"OnDemand", true}}}}, false},
      {{{{{"Label", "org.kelvane.Kelvane"}, {"OnDemand", true}}}}, false},
      {{{{{"Label", 5}}, {{"OnDemand", false}}, on}}, true},
  };
  for (const auto& [jobs, isEnabled] : rows) {
    loginItems.jobList = jobs;
    EXPECT_EQ(autoStart.isEnabled(), isEnabled) << "row " << (&jobs - &rows[0].first);
    EXPECT_EQ(autoStart.observable().isEnabled(), isEnabled);
    EXPECT_EQ(autoStart.kvo().isEnabled(), isEnabled);
  }
}

TEST_F(AutoStartTest, AnnouncesEachChangeInOrder) {
  std::vector<std::string> told;
  const auto note = [&](const std::string& what) {
    told.push_back(what + (autoStart.isEnabled() ? ", on" : ", off"));
  };
  const auto will =
      autoStart.observable().objectWillChange().subscribe([&](auto) { note("will"); });
  const auto notices = autoStart.kvo().notices().subscribe(
      [&](const auto& notice) { note(notice.isPrior ? "prior" : "after"); });
  const auto changes =
      autoStart.publisher().subscribe([&](bool value) { note(value ? "true" : "false"); });
  EXPECT_THAT(told, ElementsAre("false, off"));

  told.clear();
  autoStart.observable().setEnabled(true);
  const auto enabling = ElementsAre("will, off", "prior, off", "after, on", "true, on");
  EXPECT_THAT(told, enabling);
  told.clear();
  autoStart.kvo().setEnabled(true);
  EXPECT_THAT(told, ElementsAre("will, on", "prior, on", "after, on", "true, on"));
  EXPECT_THAT(loginItems.requests, ElementsAre(std::pair(kHelper, true), std::pair(kHelper, true)));

  loginItems.refuses = true;
  told.clear();
  autoStart.setEnabled(false);
  EXPECT_THAT(told, ElementsAre("will, on", "prior, on", "after, on", "false, on"));
}

TEST_F(AutoStartTest, ThePublisherBeginsWithWhatIsSoWhenItIsFirstUsed) {
  loginItems.setEnabled(kHelper, true);
  std::vector<bool> told;
  const auto first = autoStart.publisher().subscribe([&](bool value) { told.push_back(value); });
  loginItems.jobList = std::nullopt;
  const auto second = autoStart.publisher().subscribe([&](bool value) { told.push_back(value); });
  EXPECT_THAT(told, ElementsAre(true, true));
}

TEST_F(AutoStartTest, TheToggleShowsThePlatformsStateAndSetsIt) {
  AutoStart::Toggle toggle(autoStart.observable());
  ViewNode node;
  node.kind = ViewNode::Kind::toggle;
  node.id = node.action = "general/launch";
  node.label = "Launch at login";
  node.isOn = false;
  EXPECT_EQ(toggle.view("general/launch"), node);
  toggle.setOn(true);
  EXPECT_TRUE(toggle.view("general/launch").isOn.value());
  loginItems.refuses = true;
  toggle.setOn(false);
  EXPECT_TRUE(toggle.isOn());
}

TEST(AutoStart, AnApplicationWithoutAnIdentifierIsFatal) {
  MemoryLoginItems loginItems;
  EXPECT_DEATH(AutoStart(loginItems, ""), "identifier");
}

}  // namespace
}  // namespace kelvane
