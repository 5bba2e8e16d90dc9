#include "platform/linux/notifications/notice_windows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/notifications/notification_server_test.h"
#include "platform/memory/memory_run_loop.h"

namespace kelvane {
namespace {

using testing::ElementsAre;

class NoticeWindowsTest : public testing::Test {
 protected:
  NoticeWindowsTest() {
    session_.startServer();
    session_.settle();
  }

  // Everything that is said and due now.
  void settle() {
    session_.settle();
    loop_.run();
    session_.settle();
  }
  std::unique_ptr<AlertHandle> show(const Alert& alert) {
    auto handle = windows_.alert(alert, [this](int button) { answers_.push_back(button); });
    EXPECT_THAT(answers_, ElementsAre()) << "not inside the call";
    return handle;
  }
  std::string lastNotify() const {
    return GCharPtr(g_variant_print(session_.server->lastNotify.get(), FALSE)).get();
  }
  std::string standardError(const std::function<void()>& job) {
    testing::internal::CaptureStderr();
    job();
    return testing::internal::GetCapturedStderr();
  }

  const PrivateBus bus_;
  NoticeSession session_{bus_};
  MemoryRunLoop loop_;
  NoticeBoard board_{session_.connection.get(), loop_};
  NoticeWindows windows_{loop_, board_};
  std::vector<int> answers_;
};

TEST_F(NoticeWindowsTest, AnAlertIsACriticalNoticeAndALine) {
  const std::string critical =
      ", [], {'urgency': <byte 0x02>, 'desktop-entry': <'org.kelvane.Kelvane'>}, 0)";
  const struct {
    Alert alert;
    const char* line;
    std::string notice;
  } rows[] = {
      {{.title = "a & b", .message = "<1> &\r\n2\n"},
       "kelvane: a & b <1> &  2 \n",
       R"('dialog-warning', 'a & b', '&lt;1&gt; &amp;\r\n2\n')"},
      {{.title = "Title", .style = AlertStyle::informational},
       "kelvane: Title\n",
       "'dialog-information', 'Kelvane', 'Title'"},
      {{.title = "Title", .icon = Picture{}},
       "kelvane: Title\n",
       "'battery-caution', 'Kelvane', 'Title'"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(standardError([&] { show(row.alert); }), row.line);
    settle();
    EXPECT_EQ(lastNotify(), "('Kelvane', 0, " + row.notice + critical);
  }
  EXPECT_EQ(loop_.mode(), RunLoopMode::standard);
}

TEST_F(NoticeWindowsTest, AnAlertWithoutButtonsEndsOnceByTheUserOrByAborting) {
  for (const bool isAborted : {false, true}) {
    auto handle = show({.title = "low"});
    settle();
    session_.server->answer(g_variant_new("(u)", 7));
    settle();
    loop_.advance(3600);
    if (isAborted)
      handle->abort();
    else
      NotificationServer::sayClosed(session_.server->connection.get(), g_variant_new("(uu)", 7, 2));
    EXPECT_THAT(answers_, ElementsAre());
    settle();
    handle->abort();
    settle();
    EXPECT_THAT(std::exchange(answers_, {}), ElementsAre(0));
  }
  EXPECT_THAT(session_.log, ElementsAre("Notify 0 Kelvane", "Notify 0 Kelvane", "Close 7"));
}

TEST_F(NoticeWindowsTest, WithoutAServerAnAlertEndsAtOnce) {
  session_.endServer();
  show({.title = "low"});
  show({.title = "refused", .message = "why", .buttons = {"Quit"}});
  settle();
  EXPECT_THAT(answers_, ElementsAre(0, 0));
  // What has ended is not shown late; a refusal is still true then.
  session_.startServer();
  settle();
  EXPECT_THAT(session_.log, ElementsAre("Notify 0 refused"));
}

TEST_F(NoticeWindowsTest, ButtonsAreAnsweredOnceTheNoticeIsShownAndItStays) {
  auto handle = show({.title = "one", .buttons = {"Quit"}});
  settle();
  loop_.advance(0.9);
  EXPECT_THAT(answers_, ElementsAre());
  session_.server->answer(g_variant_new("(u)", 7));
  settle();
  EXPECT_THAT(answers_, ElementsAre(0));
  handle->abort();
  answers_.clear();

  show({.title = "two", .buttons = {"Quit"}});
  settle();
  loop_.advance(1.1);
  EXPECT_THAT(answers_, ElementsAre(0)) << "the server does not answer";
  session_.server->answer(g_variant_new("(u)", 8));
  settle();
  EXPECT_THAT(answers_, ElementsAre(0));
  EXPECT_THAT(session_.log, ElementsAre("Notify 0 Kelvane", "Notify 0 Kelvane"));
}

TEST_F(NoticeWindowsTest, OtherWindowsAreNormalNotices) {
  const std::string text =
      "No window can be shown here; “kelvane settings list” shows every setting.";
  const std::string normal =
      ", [], {'urgency': <byte 0x01>, 'desktop-entry': <'org.kelvane.Kelvane'>}, -1)";
  EXPECT_EQ(standardError([&] { EXPECT_EQ(windows_.openWindow("Settings", {}, {}), nullptr); }),
            "kelvane: " + text + "\n");
  settle();
  EXPECT_EQ(lastNotify(),
            "('Kelvane', 0, 'dialog-information', 'Kelvane', '" + text + "'" + normal);
  windows_.showAboutPanel({"Kelvane", "org.kelvane.Kelvane", "1.2.0", "345", "© Someone"});
  settle();
  EXPECT_EQ(lastNotify(), "('Kelvane', 0, 'battery', 'Kelvane 1.2.0 (345)', '© Someone'" + normal);
  EXPECT_EQ(windows_.showPopover({}, [] { ADD_FAILURE(); }), nullptr);
}

}  // namespace
}  // namespace kelvane
