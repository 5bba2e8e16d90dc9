#include "programs/kelvane/missing_tray_notice.h"

#include <optional>
#include <sstream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "platform/linux/glib/exported_object.h"
#include "platform/linux/notifications/notification_server_test.h"
#include "platform/linux/tray/watcher.h"
#include "platform/memory/memory_run_loop.h"

namespace kelvane {
namespace {

constexpr const char* kTrayPath = "/StatusNotifierWatcher";
constexpr const char* kTrayXml = R"xml(<node><interface name="org.kde.StatusNotifierWatcher">
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <signal name="StatusNotifierHostRegistered"/>
</interface></node>)xml";

// A watcher with a host or without one; the latter may also be no tray at all.
struct Tray {
  explicit Tray(const PrivateBus& bus)
      : connection(bus.connect()), interface(parseInterface(kTrayXml)) {}
  ~Tray() { leave(); }
  void answer() {
    object.emplace(
        connection.get(), kTrayPath, *interface,
        ExportedObject::Handlers{nullptr, [this](std::string_view name) -> BusWrite {
                                   if (name == "IsStatusNotifierHostRegistered")
                                     return [this](BusWriter& value) { value.boolean(hasHost); };
                                   return [](BusWriter& value) { value.array("s", [] {}); };
                                 }});
  }
  void come() { askBus(connection.get(), "RequestName", g_variant_new("(su)", Watcher::kName, 4)); }
  void setHost(bool has) {
    hasHost = has;
    object->emit("StatusNotifierHostRegistered");
  }
  void leave() {
    object.reset();
    connection->close();
  }

  const BusPtr connection;
  const BusInterfacePtr interface;
  std::optional<ExportedObject> object;
  bool hasHost = false;
};

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
  std::optional<Tray> tray;
  std::string heard;
  std::istringstream words(play);
  for (std::string word; words >> word;) {
    if (word == "hide") isWanted = false;
    if (word == "show") isWanted = true;
    if (word == "19s") loop.advance(19);
    if (word == "1s") loop.advance(1.01);
    if (word == "hour") loop.advance(3600);
    if (word == "tray" || word == "watcher" || word == "name") {
      tray.emplace(bus);
      tray->hasHost = word == "tray";
      if (word != "name") tray->answer();
      tray->come();
    }
    if (word == "host" || word == "no-host") tray->setHost(word == "host");
    if (word == "no-tray") tray->leave();
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
      // A watcher is not enough: somebody must show what it collects.
      {"watcher 19s 1s answer host no-host", "/ / " + notify + "/ / Close 7 / / "},
      {"name 19s 1s", "/ / " + notify + "/ "},
      {"19s 1s answer watcher no-tray tray", "/ " + notify + "/ / / / Close 7 / "},
      {"watcher 19s host 1s no-host hour", "/ / / / / / "},
      // Nobody misses what is hidden, nor later.
      {"hide 19s 1s show hour", "/ / / / / "},
  };
  for (const auto& [play, heard] : rows) EXPECT_EQ(heardDuring(bus, play), heard) << play;
}

}  // namespace
}  // namespace kelvane
