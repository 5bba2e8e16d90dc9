#include "programs/kelvane/missing_tray_notice.h"

#include <memory>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "platform/linux/notifications/notification_server_test.h"
#include "platform/linux/tray/watcher.h"
#include "platform/memory/memory_run_loop.h"

namespace kelvane {
namespace {

// Plays words, each of which happens to the session, and answers what the notification server heard
// of them, with a slash after each.
std::string heardDuring(const PrivateBus& bus, const std::string& play) {
  MemoryRunLoop loop;
  NoticeSession session(bus);
  session.startServer();
  NoticeBoard board(session.connection.get(), loop);
  bool isWanted = true;
  MissingTrayNotice notice(loop, session.connection.get(), board,
                           {[&] { return isWanted; }, [] { return std::string("Do this."); }});
  BusPtr tray;
  std::string heard;
  std::istringstream words(play);
  for (std::string word; words >> word;) {
    if (word == "hide") isWanted = false;
    if (word == "show") isWanted = true;
    if (word == "19s") loop.advance(19);
    if (word == "1s") loop.advance(1.01);
    if (word == "hour") loop.advance(3600);
    if (word == "tray") {
      tray = bus.connect();
      askBus(tray.get(), "RequestName", g_variant_new("(su)", Watcher::kName, 4));
    }
    if (word == "no-tray") tray->close();
    if (word == "answer") session.server->answer(g_variant_new("(u)", 7));
    if (word == "dismiss")
      NotificationServer::sayClosed(session.server->connection.get(), g_variant_new("(uu)", 7, 2));
    session.settle();
    for (const std::string& line : std::exchange(session.log, {})) heard += line + " ";
    heard += "/ ";
  }
  if (session.server->lastNotify) {
    const char* body = nullptr;
    g_variant_get_child(session.server->lastNotify.get(), 4, "&s", &body);
    EXPECT_NE(std::string(body).find("Do this."), std::string::npos) << body;
  }
  if (tray) tray->close();
  return heard;
}

TEST(MissingTrayNotice, ComesOnceAndGoesWithATray) {
  const PrivateBus bus;
  const std::string notify = "Notify 0 No tray for the battery ";
  const std::pair<std::string, std::string> rows[] = {
      {"19s 1s answer hour", "/ " + notify + "/ / / "},
      {"19s 1s answer tray no-tray hour", "/ " + notify + "/ / Close 7 / / / "},
      {"19s 1s tray answer", "/ " + notify + "/ / Close 7 / "},
      {"19s 1s answer dismiss tray no-tray", "/ " + notify + "/ / / / / "},
      // In time, and whatever becomes of it then.
      {"tray 19s 1s no-tray hour", "/ / / / / "},
      {"19s tray 1s no-tray", "/ / / / "},
      // Nobody misses what is hidden, nor later.
      {"hide 19s 1s show hour", "/ / / / / "},
  };
  for (const auto& [play, heard] : rows) EXPECT_EQ(heardDuring(bus, play), heard) << play;
}

}  // namespace
}  // namespace kelvane
