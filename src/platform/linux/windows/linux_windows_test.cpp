#include <algorithm>
#include <cstdlib>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>

#include "platform/linux/windows/linux_windows_fixture_test.h"

namespace kelvane {
namespace {

using testing::_;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

TEST_F(LinuxWindowsTest, AnAlertOutlivesEveryDeathOfTheWindowProgram) {
  const struct {
    const char* script;
    bool starts;
    const char* line;  // besides the alert's own
    double patience = 0;
  } rows[] = {
      {"", false, ""},
      {"#!/no/such/shell\n", false, "kelvane: the window program can't be started: "},
      {"exit 3", true, "kelvane: the window program ended with status 3\n"},
      {"exit 0", true, "kelvane: the window program ended without a greeting\n"},
      {"heed alert; exec 3>&-; exit 4", true, "ended with status 4\n"},
      {"note quiet; exec sleep 60", true, "kelvane: the window program does not greet\n", 10},
      {"say '{\"protocol\":2}'; heed never", true,
       "broke the protocol: the other side speaks protocol 2, this one 1\n"},
      {"echo x >&3; heed never", true, "broke the protocol: a message is not a JSON object\n"},
      {"hello; heed alert; say '{\"kind\":\"no\"}'; heed never", true,
       "broke the protocol: a message is of an unknown kind: \"no\"\n"},
      {"hello; exec cat /dev/zero 2> /dev/null >&3", true,
       "broke the protocol: a line is too long\n"},
      {"hello; heed alert; kill -SEGV $$", true,
       "kelvane: the window program ended by Segmentation fault\n"},
      {"hello; heed alert; exec 3>&-; note quiet; exec sleep 60", true, "ended by Killed\n", 5},
      {"hello; heed alert; exit 0", true, ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.script);
    install(row.script);
    testing::internal::CaptureStderr();
    const auto handle = show({.title = "low"});
    EXPECT_EQ(loop_.mode(), row.starts ? RunLoopMode::modal : RunLoopMode::standard);
    const auto isNotice = [&] { return loop_.mode() == RunLoopMode::standard; };
    if (row.patience > 0) {
      ASSERT_TRUE(hasHeard("quiet"));
      settle();
      loop_.advance(row.patience - 0.1);
      settle();
      EXPECT_FALSE(isNotice());
      loop_.advance(0.2);
    }
    ASSERT_TRUE(until(isNotice));
    settle();
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_THAT(said, HasSubstr(row.line));
    EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), *row.line ? 2 : 1) << said;
    EXPECT_THAT(session_.log, ElementsAre(StartsWith("Notify 0 ")));
    EXPECT_THAT(answers_, IsEmpty());

    session_.server->answer(g_variant_new("(u)", 7));
    settle();
    handle->abort();
    handle->abort();
    settle();
    EXPECT_THAT(session_.log, ElementsAre(_, "Close 7"));
    EXPECT_THAT(answers_, ElementsAre(0));
  }
}

TEST_F(LinuxWindowsTest, AnAlertIsAnsweredOnce) {
  const struct {
    const char* said;
    int answer;
  } rows[] = {
      {R"({"kind":"answered","alert":1,"button":1})", 1},
      {R"({"kind":"answered","alert":1,"button":2})", 0},
      {R"({"kind":"answered","alert":1,"button":-1})", 0},
  };
  for (const auto& row : rows) {
    install("hello; heed low; say '{\"kind\":\"answered\",\"alert\":9,\"button\":1}'; say '" +
            std::string(row.said) + "'; say '" + row.said +
            "'; say '{\"kind\":\"closed\",\"window\":1}'; heed never");
    windows_->setActivationToken("t0k");
    windows_->setDark(true);
    const auto handle = show({.title = "low", .buttons = {"a", "b"}});
    EXPECT_EQ(loop_.mode(), RunLoopMode::modal);
    ASSERT_TRUE(until([&] { return !answers_.empty(); }));
    ASSERT_TRUE(hasHeard("end")) << "nothing is left to show";
    handle->abort();
    settle();
    EXPECT_THAT(answers_, ElementsAre(row.answer));
    EXPECT_EQ(heard(),
              "cairo gl-disable gl,vulkan\n"
              "{\"dark\":true,\"protocol\":1,\"reducedMotion\":true}\n" +
                  encode(ActivateWindows{"t0k"}) +
                  encode(ShowAlert{1, {.title = "low", .buttons = {"a", "b"}}}) + "end\n");
    EXPECT_THAT(session_.log, IsEmpty());
  }
}

TEST_F(LinuxWindowsTest, WhatWasSaidBeforeTheEndCounts) {
  install(
      "hello; heed low; printf '{\"kind\":\"closed\",%50000s\"window\":9}\\n' >&3; "
      "say '{\"kind\":\"answered\",\"alert\":1,\"button\":1}'; exit 0");
  const auto handle = show({.title = "low", .buttons = {"a", "b"}});
  siginfo_t ended;
  ASSERT_EQ(waitid(P_ALL, 0, &ended, WEXITED | WNOWAIT), 0);
  ASSERT_TRUE(until([&] { return !answers_.empty(); }));
  EXPECT_THAT(answers_, ElementsAre(1));
}

TEST_F(LinuxWindowsTest, AnAbortedAlertIsTakenAway) {
  install(
      "hello; heed abortAlert; say '{\"kind\":\"answered\",\"alert\":1,\"button\":1}'; heed never");
  const auto handle = show({.title = "low", .buttons = {"a", "b"}});
  handle->abort();
  handle->abort();
  EXPECT_THAT(answers_, IsEmpty());
  EXPECT_EQ(loop_.mode(), RunLoopMode::modal) << "until done is called";
  loop_.run();
  EXPECT_THAT(answers_, ElementsAre(0));
  ASSERT_TRUE(hasHeard("end"));
  EXPECT_THAT(heard(), HasSubstr(encode(AbortAlert{1}) + "end\n"));
  EXPECT_THAT(answers_, ElementsAre(0));
}

TEST_F(LinuxWindowsTest, AWindowIsToldEverythingAndTellsEverything) {
  install(
      "hello; heed front; say '{\"kind\":\"acted\",\"window\":1,\"action\":\"a\",\"id\":\"n\","
      "\"value\":3}'; say '{\"kind\":\"acted\",\"window\":5,\"action\":\"x\",\"id\":\"\","
      "\"value\":0}'; heed dark; say '{\"kind\":\"closed\",\"window\":1}'; heed never");
  std::vector<std::string> log;
  std::unique_ptr<ViewWindow> window;
  const ViewNode tree{.id = "n"};
  window = windows_->openWindow("Kelvane", tree,
                                {[&](const std::string& action, const std::string& id, int value) {
                                   log.push_back(action + id + std::to_string(value));
                                 },
                                 [&] {
                                   log.push_back("closed");
                                   window.reset();
                                 }});
  ASSERT_TRUE(window);
  EXPECT_EQ(loop_.mode(), RunLoopMode::standard);
  const std::vector<ViewStep> steps{{ViewStep::Kind::remove, "", 0, "n", {}}};
  window->apply(steps);
  windows_->setActivationToken("t0k");
  window->bringToFront();
  ASSERT_TRUE(until([&] { return !log.empty(); }));
  EXPECT_THAT(log, ElementsAre("an3"));
  windows_->activate();
  windows_->setDark(false);
  windows_->setDark(false);
  ASSERT_TRUE(until([&] { return log.size() == 2; }));
  EXPECT_THAT(log, ElementsAre("an3", "closed"));
  EXPECT_FALSE(window);
  ASSERT_TRUE(hasHeard("end"));
  EXPECT_THAT(heard(), HasSubstr("\n" + encode(OpenWindow{1, "Kelvane", tree}) +
                                 encode(ApplySteps{1, steps}) + encode(FrontWindow{1, "t0k"}) +
                                 encode(ActivateWindows{}) + encode(DarkChanged{false}) + "end\n"));

  install(kScriptThatStays);
  window = windows_->openWindow("Kelvane", tree, {nullptr, [] { ADD_FAILURE(); }});
  auto second = windows_->openWindow("Second", tree, {});
  window.reset();
  ASSERT_TRUE(hasHeard(encode(CloseWindow{1})));
  second.reset();
  ASSERT_TRUE(hasHeard("end"));
  EXPECT_THAT(heard(), HasSubstr(encode(CloseWindow{1}) + encode(CloseWindow{2}) + "end\n"));
}

TEST_F(LinuxWindowsTest, AWindowThatIsGoneIsClosedAndCanBeOpenedAgain) {
  const struct {
    const char* script;
    bool opens;
    std::size_t notices;
  } rows[] = {{"", false, 1}, {"exit 1", true, 1}, {"hello; heed open; exit 1", true, 0}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.script);
    install(row.script);
    testing::internal::CaptureStderr();
    for (int round = 0; round < 2; ++round) {
      session_.log.clear();
      bool isClosed = false;
      const auto window = windows_->openWindow("", {}, {nullptr, [&] { isClosed = true; }});
      ASSERT_EQ(window != nullptr, row.opens);
      EXPECT_EQ(until([&] { return isClosed || !window; }) && isClosed, row.opens);
      settle();
      EXPECT_EQ(session_.log.size(), row.notices);
      if (row.notices) session_.server->answer(nullptr);
      settle();
    }
    testing::internal::GetCapturedStderr();
  }
  unsetenv("DISPLAY");
  install(kScriptThatStays);
  testing::internal::CaptureStderr();
  EXPECT_EQ(windows_->openWindow("", {}, {}), nullptr);
  testing::internal::GetCapturedStderr();
  EXPECT_EQ(heard(), "") << "there is no display to start it for";
}

TEST_F(LinuxWindowsTest, WhatIsNotReadIsKeptUpToABound) {
  install("hello; exec sleep 60");
  bool isClosed = false;
  auto window = windows_->openWindow("", {}, {nullptr, [&] { isClosed = true; }});
  testing::internal::CaptureStderr();
  const ViewNode big{.label = std::string(kMaximumLine / 2, 'x')};
  for (int count = 0; count < 8; ++count) window->apply({{.node = big}});
  settle();
  EXPECT_FALSE(isClosed);
  window->apply({{.node = big}});
  window->apply({{.node = big}});
  ASSERT_TRUE(until([&] { return isClosed; }));
  EXPECT_THAT(testing::internal::GetCapturedStderr(),
              HasSubstr("kelvane: the window program does not read what it is told\n"));

  // A slow one gets every byte.
  window.reset();
  install("hello; heed never");
  window = windows_->openWindow("", {}, {});
  window->apply({{.node = big}});
  ASSERT_TRUE(hasHeard(big.label));
}

TEST_F(LinuxWindowsTest, APopoverThatCantBePlacedIsANoticeForFiveSeconds) {
  const PopoverContent content{.text = "Hello", .maximumTextWidth = 1000, .inset = 15};
  const struct {
    const char* script;
    bool isNotice;
  } rows[] = {
      {"", true},
      {"exit 1", true},
      {"hello; heed popover; say '{\"kind\":\"popoverRefused\",\"popover\":1}'; heed never", true},
      {"hello; heed popover; say '{\"kind\":\"popoverClosed\",\"popover\":1}'; heed never", false},
      {"hello; heed popover; say '{\"kind\":\"no\"}'; heed never", false},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.script);
    install(row.script);
    testing::internal::CaptureStderr();
    int closings = 0;
    const auto popover = windows_->showPopover(content, [&] { closings++; });
    ASSERT_TRUE(popover);
    ASSERT_TRUE(until([&] { return closings > 0 || !session_.log.empty(); }));
    EXPECT_EQ(closings, row.isNotice ? 0 : 1);
    if (row.isNotice) {
      session_.server->answer(g_variant_new("(u)", 7));
      settle();
      loop_.advance(4.9);
      EXPECT_EQ(closings, 0);
      loop_.advance(0.2);
      settle();
      EXPECT_EQ(closings, 1);
      EXPECT_THAT(session_.log, ElementsAre("Notify 0 Hello", "Close 7"));
    }
    popover->close();
    settle();
    EXPECT_EQ(closings, 1);
    testing::internal::GetCapturedStderr();
  }
  install(kScriptThatStays);
  int closings = 0;
  windows_->showPopover(content, [&] { closings++; })->close();
  EXPECT_EQ(closings, 1);
  ASSERT_TRUE(hasHeard("end"));
  EXPECT_THAT(heard(), HasSubstr(encode(ShowPopover{1, "Hello", 1000, 15, true, Point{7, 3}}) +
                                 encode(ClosePopover{1}) + "end\n"));
  isItemShown_ = false;
  EXPECT_EQ(windows_->showPopover(content, [] { ADD_FAILURE(); }), nullptr);
}

TEST_F(LinuxWindowsTest, TheAboutPanelKeepsTheProgramUntilItIsClosed) {
  const ApplicationInformation information{"Kelvane", "org.kelvane.Kelvane", "1.2.0", "345", "©"};
  install("hello; heed '\"kind\":\"dark\"'; say '{\"kind\":\"aboutClosed\"}'; heed never");
  windows_->showAboutPanel(information);
  auto window = windows_->openWindow("", {}, {});
  window.reset();
  ASSERT_TRUE(hasHeard(encode(CloseWindow{1})));
  windows_->setDark(true);
  ASSERT_TRUE(hasHeard("end"));
  EXPECT_THAT(heard(), HasSubstr(encode(ShowAbout{information})));
  EXPECT_THAT(heard(), HasSubstr(encode(DarkChanged{true}) + "end\n"));

  install("exit 1");
  testing::internal::CaptureStderr();
  windows_->showAboutPanel(information);
  ASSERT_TRUE(until([&] { return !session_.log.empty(); }));
  testing::internal::GetCapturedStderr();
  EXPECT_THAT(session_.log, ElementsAre("Notify 0 Kelvane 1.2.0 (345)"));
}

TEST_F(LinuxWindowsTest, AProgramThatDoesNotEndIsEnded) {
  install("hello; heed open; exec sleep 60");
  auto window = windows_->openWindow("", {}, {});
  ASSERT_TRUE(hasHeard("open"));
  pid_t pid = 0;
  std::ifstream(computer_ / "1" / "pid") >> pid;
  window.reset();
  settle();
  loop_.advance(4.9);
  EXPECT_EQ(kill(pid, 0), 0);
  loop_.advance(0.2);
  EXPECT_TRUE(runUntil([&] { return kill(pid, 0) != 0; })) << "neither there nor a zombie";
}

}  // namespace
}  // namespace kelvane
