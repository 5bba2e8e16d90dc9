#include "platform/linux/notifications/notice_board.h"

#include <atomic>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include "platform/linux/notifications/linux_user_notifications.h"
#include "platform/linux/notifications/notification_server_test.h"
#include "platform/memory/memory_run_loop.h"

namespace kelvane {
namespace {

// Plays a script of what happens, "; " between the steps; the log is what came of it. The board is
// made by the first step that needs one, so that a server may be there before it or come later.
class Play {
 public:
  explicit Play(const PrivateBus& bus) : bus_(bus), session_(bus) {}

  std::string run(const std::string& script) {
    std::istringstream steps(script);
    for (std::string step; std::getline(steps >> std::ws, step, ';');) {
      std::istringstream words(step);
      std::string verb;
      std::string object;
      std::string text;
      words >> verb >> object >> text;
      // Wishes that follow one another come in one turn.
      const bool isWish = verb == "post" || verb == "close";
      if (!isWish) session_.settle();
      act(verb, object, text);
      if (!isWish) session_.settle();
    }
    session_.settle();
    std::string result;
    for (const std::string& each : session_.log) result += (result.empty() ? "" : "; ") + each;
    return result;
  }

 private:
  NoticeBoard& board() {
    if (!board_) board_ = std::make_unique<NoticeBoard>(session_.connection.get(), runLoop_);
    return *board_;
  }
  void act(const std::string& verb, const std::string& object, const std::string& text) {
    const auto number = [&] { return static_cast<guint32>(std::stoul(object)); };
    if (verb == "post") {
      board().post(object, {text, "", "battery"}, [this, object](NoticeEvent event) {
        session_.log.push_back((event == NoticeEvent::shown ? "shown " : "ended ") + object);
      });
    } else if (verb == "close") {
      board().close(object);
    } else if (verb == "start") {
      session_.startServer();
    } else if (verb == "end") {
      session_.endServer();
    } else if (verb == "wait") {
      runLoop_.advance(number());
    } else if (verb == "answer") {
      session_.server->answer(g_variant_new("(u)", number()));
    } else if (verb == "babble") {
      session_.server->answer(g_variant_new("(s)", "7"));
    } else if (verb == "refuse") {
      session_.server->answer(nullptr);
    } else if (verb == "closed") {
      NotificationServer::sayClosed(session_.server->connection.get(),
                                    g_variant_new("(uu)", number(), 2));
    } else if (verb == "stranger-closed") {
      stranger_ = bus_.connect();
      NotificationServer::sayClosed(stranger_.get(), g_variant_new("(uu)", number(), 2));
      askBus(stranger_.get(), "GetId", nullptr);
    } else if (verb == "closed-text") {
      NotificationServer::sayClosed(session_.server->connection.get(), g_variant_new("(s)", "7"));
    } else {
      FAIL() << "no such step: " << verb;
    }
  }

  const PrivateBus& bus_;
  MemoryRunLoop runLoop_;
  NoticeSession session_;
  BusPtr stranger_;
  std::unique_ptr<NoticeBoard> board_;
};

TEST(NoticeBoard, OneNoticePerIdentifierInEveryOrderOfEvents) {
  const struct {
    const char* script;
    const char* log;
  } rows[] = {
      // In good order.
      {"start; post a one; answer 7; post a two; answer 7; close a; post a three",
       "Notify 0 one; shown a; Notify 7 two; shown a; Close 7; Notify 0 three"},
      {"start; post a one; post b two; answer 7; answer 8; close a",
       "Notify 0 one; Notify 0 two; shown a; shown b; Close 7"},
      // The latest wish, once the id is known.
      {"start; post a one; close b; post a two; post a three; answer 7", "Notify 0 three; shown a"},
      {"start; post b x; answer 1; post a one; wait 1; close b; post a two; post a three; answer 7",
       "Notify 0 x; shown b; Notify 0 one; Close 1; Notify 7 three"},
      {"start; post a one; wait 1; close a; answer 7", "Notify 0 one; Close 7"},
      {"start; post a one; wait 1; close a; post a two; answer 7; answer 7",
       "Notify 0 one; Notify 7 two; shown a"},
      // The user closes one.
      {"start; post a one; answer 7; closed 7; post a two; answer 8; close a; closed 8",
       "Notify 0 one; shown a; ended a; Notify 0 two; shown a; Close 8"},
      {"start; post a one; answer 7; post a two; closed 7; answer 8; closed 8",
       "Notify 0 one; shown a; Notify 7 two; shown a; ended a"},
      // Nobody else can, and not what isn't ours.
      {"start; post a one; answer 7; stranger-closed 7; closed-text; closed 0; closed 8; close a",
       "Notify 0 one; shown a; Close 7"},
      // Servers that answer nonsense.
      {"start; post a one; refuse; post a two; answer 7",
       "Notify 0 one; ended a; Notify 0 two; shown a"},
      {"start; post a one; babble; close a; post a two", "Notify 0 one; ended a; Notify 0 two"},
      {"start; post a one; answer 0; close a; post a two", "Notify 0 one; ended a; Notify 0 two"},
      {"start; post a one; wait 1; close a; refuse; post a two", "Notify 0 one; Notify 0 two"},
      {"start; post a one; answer 7; post a two; answer 9; close a",
       "Notify 0 one; shown a; Notify 7 two; shown a; Close 7; Close 9"},
      {"start; post a one; answer 7; post a two; refuse; close a",
       "Notify 0 one; shown a; Notify 7 two; ended a; Close 7"},
      // Servers come and go.
      {"start; post a one; answer 7; end; start; post a two; answer 1",
       "Notify 0 one; shown a; ended a; Notify 0 two; shown a"},
      {"start; post a one; answer 7; start; close a; post a two",
       "Notify 0 one; shown a; ended a; Notify 0 two"},
      {"start; post a one; wait 9; end; start; answer 3; close a",
       "Notify 0 one; ended a; Notify 0 one; Close 3"},
      {"start; post a one; wait 1; close a; end; start", "Notify 0 one"},
      {"start; post a one; answer 7; post a two; wait 1; end; start",
       "Notify 0 one; shown a; Notify 7 two; ended a; Notify 0 two"},
      {"start; post a one; wait 61; end; start", "Notify 0 one; ended a"},
      {"post a one; wait 60; start; answer 7; close a", "ended a; Notify 0 one; Close 7"},
      {"post a one; wait 61; start; post b two", "ended a; Notify 0 two"},
      {"post a one; wait 1; post a two; close b; wait 1; start", "ended a; ended a; Notify 0 two"},
      {"post a one; wait 1; close a; start", "ended a"},
  };
  const PrivateBus bus;
  // GLib complains of values of another type, and goes on.
  const GLogLevelFlags before = g_log_set_always_fatal(G_LOG_LEVEL_CRITICAL);
  for (const auto& row : rows) EXPECT_EQ(Play(bus).run(row.script), row.log) << row.script;
  g_log_set_always_fatal(before);
}

// A server that is started by the bus shows what it was started for, once; when it ends it is not
// started again.
TEST(NoticeBoard, TheBusMayStartTheServer) {
  std::string pattern = (std::filesystem::temp_directory_path() / "services-XXXXXX").string();
  const std::filesystem::path folder = mkdtemp(pattern.data());
  // Its name is taken by the test while the bus is waiting for it.
  std::ofstream(folder / "server.service")
      << "[D-BUS Service]\nExec=/bin/sleep 5\nName=" << NotificationServer::kName << "\n";
  const struct {
    const char* script;
    const char* log;
  } rows[] = {
      {"post a one; wait 1; start; answer 7; close a", "Notify 0 one; shown a; Close 7"},
      {"post a one; wait 1; post a two; start; answer 7; answer 7; close a",
       "Notify 0 one; Notify 7 two; shown a; Close 7"},
      {"post a one; wait 1; close a; start; answer 7", "Notify 0 one; Close 7"},
      {"start; post a one; wait 1; end; wait 61; start", "Notify 0 one; ended a"},
  };
  for (const auto& row : rows) {
    const PrivateBus bus(folder.string());
    EXPECT_EQ(Play(bus).run(row.script), row.log) << row.script;
  }
  std::filesystem::remove_all(folder);
}

// Other programs' notices are none of our business, and wake nobody.
TEST(NoticeBoard, ListensOnlyWhileANoticeIsShown) {
  const PrivateBus bus;
  const MemoryRunLoop runLoop;
  NoticeSession session(bus);
  session.startServer();
  NoticeBoard board(session.connection.get(), runLoop);
  const Arrivals heard(session.connection, "", "NotificationClosed");
  const auto someoneElses = [&] {
    NotificationServer::sayClosed(session.server->connection.get(), g_variant_new("(uu)", 99, 1));
    session.settle();
    return heard.count();
  };
  session.settle();
  EXPECT_EQ(someoneElses(), 0);
  board.post("a", {"one", "", "battery"});
  session.settle();
  EXPECT_EQ(someoneElses(), 1);
  session.server->answer(g_variant_new("(u)", 7));
  session.settle();
  EXPECT_EQ(someoneElses(), 2);
  board.close("a");
  session.settle();
  EXPECT_EQ(someoneElses(), 2);
}

TEST(LinuxUserNotifications, RemovesItsOwnAndNothingElse) {
  const PrivateBus bus;
  const MemoryRunLoop runLoop;
  NoticeSession session(bus);
  session.startServer();
  NoticeBoard board(session.connection.get(), runLoop);
  LinuxUserNotifications notifications(board);
  session.settle();
  board.post("alert", {"low", "", "battery"});
  notifications.post({"batteryPercentage", "20%", ""});
  notifications.post({"batteryFullyCharged", "Fully Charged", "Your Mac's battery is at 100%"});
  session.settle();
  for (const guint32 id : {1U, 2U}) session.server->answer(g_variant_new("(u)", id));
  session.settle();
  notifications.removeAllDelivered();
  session.settle();
  session.server->answer(g_variant_new("(u)", 3));
  notifications.removeAllDelivered();
  session.settle();
  EXPECT_THAT(session.log, testing::ElementsAre("Notify 0 low", "Notify 0 20%",
                                                "Notify 0 Fully Charged", "Close 2", "Close 3"));
}

}  // namespace
}  // namespace kelvane
