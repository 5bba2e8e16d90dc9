#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/windows/linux_windows_fixture_test.h"
#include "platform/memory/memory_menu.h"

namespace kelvane {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

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

TEST_F(MenuOfWindowsTest, StaysClosedWithoutWindowsAndBehindAnAlert) {
  install("");
  testing::internal::CaptureStderr();
  for (int clicks = 0; clicks < 3; ++clicks) click();
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "kelvane: no window can be shown here, so a click opens no menu\n");
  install(kScriptThatStays);
  const auto alert = show({.title = "low"});
  click();
  // Whatever comes up beside the item next comes up where this click was.
  ASSERT_TRUE(hasHeard(encode(ActivateWindows{"", Point{1190, 16}})));
  alert->abort();
  EXPECT_THAT(menu_.history, IsEmpty());
}

TEST_F(MenuOfWindowsTest, RemembersWhereTheItemIsThatItsHostPutElsewhere) {
  install(
      "hello; heed alert; say '{\"kind\":\"itemClicked\",\"told\":[7,3],\"place\":[14,6]}'; "
      "say '{\"kind\":\"answered\",\"alert\":1,\"button\":0}'; heed never");
  const auto alert = show({.title = "hello"});
  ASSERT_TRUE(until([&] { return !answers_.empty(); }));
  ASSERT_TRUE(hasHeard("end\n"));  // the next program knows nothing of it
  const auto popover = windows_->showPopover({.text = "here"}, [] {});
  ASSERT_TRUE(hasHeard("\"anchor\":[14.0,6.0]"));
}

}  // namespace
}  // namespace kelvane
