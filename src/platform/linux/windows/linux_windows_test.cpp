#include "platform/linux/windows/linux_windows.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <glib-unix.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include "platform/linux/notifications/notification_server_test.h"
#include "platform/memory/memory_menu.h"
#include "platform/memory/memory_run_loop.h"

namespace kelvane {
namespace {

using testing::_;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

// A window program is a shell script here. `say` tells the resident something, `heed` reads what it
// tells until a line with that word comes; everything read is logged, and so is the stream's end.
constexpr const char* kPrelude = R"sh(#!/bin/sh
trap '' PIPE
exec 4> "${0%/*}/log"
note() { printf '%s\n' "$1" 2> /dev/null >&4; }
say() { printf '%s\n' "$1" 2> /dev/null >&3; }
heed() {
  while read -r line <&3; do
    note "$line"
    case $line in *"$1"*) return;; esac
  done
  note end
  exit 0
}
hello() { say '{"protocol":1,"dark":null,"reducedMotion":false}'; }
note "$GSK_RENDERER $GDK_DEBUG $GDK_DISABLE"
echo $$ > "${0%/*}/pid"
)sh";

class LinuxWindowsTest : public testing::Test {
 protected:
  LinuxWindowsTest() {
    setenv("DISPLAY", ":nowhere", 1);
    for (const char* name : {"WAYLAND_DISPLAY", "GSK_RENDERER", "GDK_DEBUG", "GDK_DISABLE"})
      unsetenv(name);
    std::string pattern = (std::filesystem::temp_directory_path() / "windows-XXXXXX").string();
    computer_ = mkdtemp(pattern.data());
    session_.startServer();
    session_.settle();
  }
  ~LinuxWindowsTest() override { std::filesystem::remove_all(computer_); }

  // What a computer starts with that has this window program; "" for none.
  void install(const std::string& script) {
    windows_.reset();
    const auto folder = computer_ / std::to_string(++installations_);  // one may still run
    std::filesystem::create_directory(folder);
    // Both ends, so that it never has an end.
    mkfifo((folder / "log").c_str(), 0600);
    log_ = UniqueFd(open((folder / "log").c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
    heard_.clear();
    if (!script.empty()) {
      std::ofstream(folder / "program") << (script.starts_with("#!") ? "" : kPrelude) << script;
      std::filesystem::permissions(folder / "program", std::filesystem::perms::owner_all);
    }
    WindowOptions options;
    options.programs = {folder / "missing", folder, folder / "program"};
    options.isMotionReduced = [] { return true; };
    options.isItemShown = [this] { return isItemShown_; };
    options.itemPlace = [] { return Point{7, 3}; };
    windows_ = std::make_unique<LinuxWindows>(loop_, board_, options);
    session_.log.clear();
    answers_.clear();
  }
  bool until(const std::function<bool()>& done) {
    return runUntil([&] {
      loop_.run();
      return done();
    });
  }
  void settle() {
    for (int i = 0; i < 3; ++i) {
      session_.settle();
      loop_.run();
    }
  }
  // All that the script has logged by now.
  const std::string& heard() {
    std::array<char, 4096> bytes;
    ssize_t count = 0;
    while ((count = read(log_.get(), bytes.data(), bytes.size())) > 0)
      heard_.append(bytes.data(), static_cast<std::size_t>(count));
    return heard_;
  }
  bool hasHeard(const std::string& words) {
    GSource* source = g_unix_fd_source_new(log_.get(), G_IO_IN);
    const GUnixFDSourceFunc stay = [](gint, GIOCondition, gpointer) -> gboolean { return TRUE; };
    g_source_set_callback(source, G_SOURCE_FUNC(stay), nullptr, nullptr);
    g_source_attach(source, nullptr);
    const bool has = until([&] { return heard().find(words) != std::string::npos; });
    g_source_destroy(source);
    g_source_unref(source);
    return has;
  }
  std::unique_ptr<AlertHandle> show(const Alert& alert) {
    auto handle = windows_->alert(alert, [this](int button) {
      EXPECT_EQ(loop_.mode(), RunLoopMode::standard);
      answers_.push_back(button);
    });
    EXPECT_THAT(answers_, IsEmpty()) << "not inside the call";
    return handle;
  }

  const PrivateBus bus_;
  NoticeSession session_{bus_};
  MemoryRunLoop loop_;
  NoticeBoard board_{session_.connection.get(), loop_};
  std::filesystem::path computer_;
  int installations_ = 0;
  UniqueFd log_;
  std::string heard_;
  bool isItemShown_ = true;
  std::unique_ptr<LinuxWindows> windows_;
  std::vector<int> answers_;
};

constexpr const char* kScriptThatStays = "hello; heed never";

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

class MenuOfWindowsTest : public LinuxWindowsTest {
 protected:
  MenuOfWindowsTest() {
    menu_.make = [this] {
      const auto says = [this](const char* what) {
        return [this, what] {
          EXPECT_EQ(loop_.mode(), RunLoopMode::standard);
          menu_.history.push_back(what);
        };
      };
      more_ = std::make_shared<MemoryMenu>(
          std::vector<MenuLine>{{.title = "FAQ", .action = says("FAQ")}});
      return std::vector<MenuLine>{{.title = "57", .isEnabled = false, .action = says("57")},
                                   {.title = "More", .submenu = more_},
                                   {.title = "Go", .action = says("Go")}};
    };
  }
  bool isOpen() { return loop_.mode() == RunLoopMode::tracking; }
  void click() { windows_->toggleMenu(menu_, Point{1190, 16}); }

  MemoryMenu menu_;
  std::shared_ptr<MemoryMenu> more_;
};

TEST_F(MenuOfWindowsTest, EndsInEveryWayAndThenDoesWhatWasChosen) {
  const struct {
    const char* script;
    std::vector<std::string> history;
  } rows[] = {
      {"say '{\"kind\":\"menuChosen\",\"menu\":1,\"line\":3}'", {"opened", "closed", "Go"}},
      {"say '{\"kind\":\"menuChosen\",\"menu\":1,\"line\":2}'", {"opened", "closed", "FAQ"}},
      {"say '{\"kind\":\"menuChosen\",\"menu\":1,\"line\":0}'", {"opened", "closed"}},
      {"say '{\"kind\":\"menuChosen\",\"menu\":1,\"line\":1}'", {"opened", "closed"}},
      {"say '{\"kind\":\"menuChosen\",\"menu\":1,\"line\":4}'", {"opened", "closed"}},
      {"say '{\"kind\":\"menuChosen\",\"menu\":9,\"line\":3}'; "
       "say '{\"kind\":\"menuClosed\",\"menu\":1}'",
       {"opened", "closed"}},
      {"kill -KILL $$", {"opened", "closed"}},
      {"exit 1", {"opened", "closed"}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.script);
    install("hello; heed menu; " + std::string(row.script) + "; heed never");
    menu_.history.clear();
    windows_->setActivationToken("t0k");
    testing::internal::CaptureStderr();
    click();
    EXPECT_TRUE(isOpen());
    menu_.needsUpdate();  // as the exported menu does; the open one stays as it is
    ASSERT_TRUE(until([&] { return !isOpen(); }));
    settle();
    EXPECT_EQ(menu_.history, row.history);
    testing::internal::GetCapturedStderr();
    EXPECT_THAT(heard(),
                HasSubstr(encode(ShowMenu{
                    1,
                    {{.line = 0, .title = "57", .isEnabled = false},
                     {.line = 1, .title = "More", .submenu = {{.line = 2, .title = "FAQ"}}},
                     {.line = 3, .title = "Go"}},
                    Point{1190, 16},
                    "t0k"})));
  }
}

TEST_F(MenuOfWindowsTest, ASecondClickClosesIt) {
  const auto loses = [](const char* menu) {
    return "heed '\"menu\",'; say '{\"kind\":\"menuClosed\",\"menu\":" + std::string(menu) +
           ",\"hasLostFocus\":true}'; ";
  };
  install("hello; heed closeMenu; " + loses("3") + loses("4") + "heed never");
  const auto window = windows_->openWindow("Kelvane", {}, {});  // keeps the program
  const auto clicksAndLoses = [&] {
    click();
    EXPECT_TRUE(isOpen());
    return until([&] { return !isOpen(); });
  };
  click();
  click();
  EXPECT_FALSE(isOpen());
  ASSERT_TRUE(clicksAndLoses());
  click();
  EXPECT_FALSE(isOpen()) << "it was this click that took the focus away";
  ASSERT_TRUE(clicksAndLoses());
  loop_.advance(0.4);
  click();
  EXPECT_TRUE(isOpen());
  windows_->closeMenu();
  windows_->closeMenu();
  EXPECT_EQ(menu_.history.size(), 8U);
  ASSERT_TRUE(hasHeard(encode(CloseMenu{5})));
  EXPECT_THAT(heard(), HasSubstr(encode(CloseMenu{2})));
}

TEST_F(MenuOfWindowsTest, ItsCommandHasTheSameProgramForItsWindow) {
  install("hello; heed menu; say '{\"kind\":\"menuChosen\",\"menu\":1,\"line\":0}'; heed never");
  std::unique_ptr<ViewWindow> window;
  menu_.make = [&] {
    const auto open = [&] { window = windows_->openWindow("Kelvane", {}, {}); };
    return std::vector<MenuLine>{{.title = "Go", .action = [this, open] { loop_.async(open); }}};
  };
  click();
  ASSERT_TRUE(hasHeard("\"kind\":\"open\""));
  EXPECT_EQ(heard().find("end\n"), std::string::npos);
}

TEST_F(MenuOfWindowsTest, StaysClosedWithoutWindowsAndBehindAnAlert) {
  install("");
  testing::internal::CaptureStderr();
  for (int clicks = 0; clicks < 3; ++clicks) click();
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "kelvane: no window can be shown here, so a click opens no menu\n");
  install(kScriptThatStays);
  const auto alert = show({.title = "low"});
  click();
  ASSERT_TRUE(hasHeard(encode(ActivateWindows{})));
  alert->abort();
  EXPECT_THAT(menu_.history, IsEmpty());
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
