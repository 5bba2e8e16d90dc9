#include "platform/macos/windows/modal_alert.h"

#include <optional>
#include <string>
#include <vector>

#include <doubles/doubles.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/macos/run_loop/mac_run_loop.h"

namespace kelvane {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ModalAlertTest : public ::testing::Test {
 protected:
  void SetUp() override { (void)NSApplication.sharedApplication; }

  std::unique_ptr<AlertHandle> show(const std::string& title, Alert alert = {}) {
    alert.title = title;
    return showModalAlert(alert, [this, title](int button) {
      EXPECT_EQ(NSApp.modalWindow, nil);
      seen.push_back(title + " " + std::to_string(button));
    });
  }
  std::vector<std::string> take() { return std::exchange(seen, {}); }

  MacRunLoop loop;
  std::vector<std::string> seen;
};

TEST_F(ModalAlertTest, ShowsWhatItIsGivenAndTellsTheButton) {
  Picture icon;
  icon.size = {16, 16};
  const auto handle = show("title", {.message = "message",
                                     .style = AlertStyle::critical,
                                     .buttons = {"Yes", "No"},
                                     .minimumWidth = 300,
                                     .icon = icon});
  EXPECT_EQ(doubles::application().alert, nil) << "not inside the call";
  doubles::afterwards(1, [] {
    NSAlert* alert = doubles::application().alert;
    EXPECT_STREQ(alert.messageText.UTF8String, "title");
    EXPECT_STREQ(alert.informativeText.UTF8String, "message");
    EXPECT_EQ(alert.alertStyle, NSAlertStyleCritical);
    EXPECT_STREQ(alert.buttons.lastObject.title.UTF8String, "No");
    EXPECT_EQ(alert.buttons.count, 2U);
    EXPECT_EQ(alert.accessoryView.frame.size.width, 300);
    EXPECT_EQ(alert.icon.size.width, 16);
    doubles::press(1);
  });
  doubles::runFor(2);
  EXPECT_THAT(take(), ElementsAre("title 1"));
}

TEST_F(ModalAlertTest, AlertsOfOneTurnComeOneAfterTheOther) {
  const auto first = show("first");
  const auto second = show("second");
  doubles::afterwards(1, [] { doubles::press(0); });
  doubles::afterwards(2, [this] {
    EXPECT_THAT(take(), ElementsAre("first 0"));
    doubles::press(0);
  });
  doubles::runFor(3);
  EXPECT_THAT(take(), ElementsAre("second 0"));
}

TEST_F(ModalAlertTest, EverythingElseGoesOnWhileItIsShown) {
  // As the application does: from a job, with a timer that ends the alert.
  std::unique_ptr<AlertHandle> handle;
  std::unique_ptr<Timer> poll;
  loop.async([&] {
    handle = show("alert");
    poll = loop.startTimer(0.2, true, [&] {
      if (doubles::now() < 1) return;
      poll.reset();
      handle->abort();
    });
    loop.async([this] { seen.push_back("job"); });
    CFRunLoopPerformBlock(CFRunLoopGetMain(), kCFRunLoopCommonModes, ^{
      seen.push_back("performed");
    });
    loop.asyncAfter(0.5, [this] { seen.push_back("later job"); });
  });
  doubles::runFor(3);
  EXPECT_THAT(take(), ElementsAre("performed", "job", "later job", "alert 0"));
}

TEST_F(ModalAlertTest, AJobMayAbortIt) {
  for (const bool throws : {false, true}) {
    doubles::application().abortThrows = throws;
    const auto handle = show("alert");
    loop.asyncAfter(1, [&] {
      handle->abort();
      handle->abort();
      seen.push_back("rest of the job");
    });
    doubles::runFor(2);
    EXPECT_THAT(take(), ElementsAre("rest of the job", "alert 0"));
  }
}

TEST_F(ModalAlertTest, AnAlertThatIsAbortedBeforeItIsShownIsNotShown) {
  const auto handle = show("alert");
  handle->abort();
  EXPECT_THAT(take(), IsEmpty()) << "not inside the call";
  doubles::runFor(0);
  EXPECT_THAT(take(), ElementsAre("alert 0"));
  handle->abort();
  doubles::runFor(1);
  EXPECT_THAT(take(), IsEmpty()) << "once";
}

TEST_F(ModalAlertTest, AbortingLeavesAnAlertOfOthersAlone) {
  const auto ended = show("ended");
  const auto shown = show("shown");
  doubles::afterwards(1, [] { doubles::press(0); });
  doubles::afterwards(2, [&] {
    ended->abort();
    EXPECT_NE(doubles::application().alert, nil);
  });
  doubles::afterwards(3, [] { doubles::press(0); });
  doubles::runFor(2.5);
  doubles::runFor(4);
  EXPECT_THAT(take(), ElementsAre("ended 0", "shown 0"));
}

TEST_F(ModalAlertTest, TheHandleMayGoBeforeTheAlert) {
  (void)show("alert");
  doubles::afterwards(1, [] { doubles::press(0); });
  doubles::runFor(2);
  EXPECT_THAT(take(), ElementsAre("alert 0"));
}

TEST_F(ModalAlertTest, TerminatingEndsTheAlertFirstWhetherItIsShownOrNot) {
  for (const double later : {0.0, 1.0}) {
    const auto first = show("first");
    const auto second = show("second");
    if (later == 0) {
      loop.terminate(4);
    } else {
      loop.asyncAfter(later, [this] { loop.terminate(4); });
    }
    EXPECT_EQ(loop.run(), 4);
    EXPECT_THAT(take(), ElementsAre("first 0", "second 0"));
  }
}

}  // namespace
}  // namespace kelvane
