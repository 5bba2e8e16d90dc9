#include "platform/portable/alert_run.h"

#include <optional>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kelvane {
namespace {

using ::testing::ElementsAre;

TEST(AlertRun, AnswersWithTheButtonThatThereIs) {
  const struct {
    std::vector<std::string> buttons;
    std::ptrdiff_t reported;
    std::optional<std::size_t> pressed;
  } rows[] = {
      {{}, 0, {}},
      {{"Quit"}, 0, 0},
      {{"Quit", "Stay"}, 1, 1},
      {{"Quit", "Stay"}, 2, {}},
      {{"Quit", "Stay"}, -2001, {}},  // a loop that was stopped
  };
  for (const auto& [buttons, reported, pressed] : rows) {
    EXPECT_EQ(pressedButton(buttons.size(), reported), pressed);
    std::vector<int> answers;
    AlertRun run({.buttons = buttons}, [&](int button) { answers.push_back(button); });
    EXPECT_TRUE(run.begin());
    run.end(reported);
    run.end(reported);
    EXPECT_FALSE(run.isShown());
    EXPECT_FALSE(run.abort());
    EXPECT_THAT(answers, ElementsAre(static_cast<int>(pressed.value_or(0))));
  }
}

TEST(AlertRun, AbortingEndsItAsIfDismissed) {
  for (const bool isShown : {false, true}) {
    std::vector<int> answers;
    AlertRun run({.buttons = {"Quit", "Stay"}}, [&](int button) { answers.push_back(button); });
    EXPECT_EQ(isShown && run.begin(), isShown);
    EXPECT_EQ(run.isShown(), isShown);
    EXPECT_EQ(run.abort(), isShown);
    EXPECT_FALSE(run.abort()) << "once is enough";
    EXPECT_FALSE(run.begin());
    run.end(1);
    EXPECT_THAT(answers, ElementsAre(0));
  }
}

TEST(AlertRun, ATreesAlertIsMadeOfItsTextsAndButtons) {
  ViewNode node{.kind = ViewNode::Kind::alert, .label = "Hidden"};
  EXPECT_EQ(alertOf(node).message, "");
  for (const char* label : {"Stay", "Quit"})
    node.children.push_back({.kind = ViewNode::Kind::button, .label = label});
  for (const char* label : {"First.", "Second."})
    node.children.insert(node.children.end() - 1, {.kind = ViewNode::Kind::text, .label = label});
  const Alert alert = alertOf(node);
  EXPECT_EQ(alert.title, "Hidden");
  EXPECT_EQ(alert.message, "First.\nSecond.");
  EXPECT_THAT(alert.buttons, ElementsAre("Stay", "Quit"));
}

}  // namespace
}  // namespace kelvane
