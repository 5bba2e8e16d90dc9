// A notification server on a bus of the test's own, that answers only when and what a test tells
// it, and a log of what it was asked. Main thread.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include <glib.h>

#include "platform/linux/glib/bus.h"
#include "platform/linux/glib/exported_object.h"
#include "platform/linux/glib/private_bus_test.h"

namespace kelvane {

class NotificationServer {
 public:
  static constexpr const char* kName = "org.freedesktop.Notifications";
  static constexpr const char* kPath = "/org/freedesktop/Notifications";

  // Takes the name over from another one. "Notify 7 summary" and "Close 7" are added to the log.
  NotificationServer(const PrivateBus& bus, std::vector<std::string>& log)
      : connection(bus.connect()), log_(log) {
    askBus(connection.get(), "RequestName", g_variant_new("(su)", kName, 3));
  }
  ~NotificationServer() {
    object_.reset();
    connection->close();
  }

  // To the oldest Notify without an answer; of any type, null for an error.
  void answer(GVariant* value) {
    ASSERT_FALSE(unanswered_.empty());
    const BusInvocation invocation = unanswered_.front();
    unanswered_.pop_front();
    value ? invocation.answer(value) : invocation.refuse("x.No", "No");
  }
  static void sayClosed(BusConnection* by, GVariant* parameters) {
    by->emit(kPath, kName, "NotificationClosed", parameters);
  }

  const BusPtr connection;
  GVariantPtr lastNotify;  // its arguments

 private:
  void called(const ExportedObject::Call& call) {
    if (call.method == "CloseNotification") {
      std::uint32_t id = 0;
      g_variant_get(call.arguments, "(u)", &id);
      log_.push_back("Close " + std::to_string(id));
      call.invocation.answer();
      return;
    }
    lastNotify = shareVariant(call.arguments);
    std::uint32_t replaced = 0;
    const char* summary = nullptr;
    g_variant_get_child(call.arguments, 1, "u", &replaced);
    g_variant_get_child(call.arguments, 3, "&s", &summary);
    log_.push_back("Notify " + std::to_string(replaced) + " " + summary);
    unanswered_.push_back(call.invocation);
  }

  std::vector<std::string>& log_;
  std::deque<BusInvocation> unanswered_;
  const BusInterfacePtr interface_ = parseInterface(R"(
    <node><interface name="org.freedesktop.Notifications">
      <method name="Notify">
        <arg type="s" direction="in"/><arg type="u" direction="in"/><arg type="s" direction="in"/>
        <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="as" direction="in"/>
        <arg type="a{sv}" direction="in"/><arg type="i" direction="in"/>
        <arg type="u" direction="out"/>
      </method>
      <method name="CloseNotification"><arg type="u" direction="in"/></method>
    </interface></node>)");
  std::unique_ptr<ExportedObject> object_ = std::make_unique<ExportedObject>(
      connection.get(), kPath, *interface_,
      ExportedObject::Handlers{[this](const ExportedObject::Call& call) { called(call); },
                               nullptr});
};

// A client's connection, the server that is there, and their log.
class NoticeSession {
 public:
  explicit NoticeSession(const PrivateBus& bus) : bus_(bus), connection(bus.connect()) {}

  void startServer() {
    auto next = std::make_unique<NotificationServer>(bus_, log);
    settle();  // the former one is still there meanwhile
    server = std::move(next);
    settle();
  }
  void endServer() {
    std::string owner = "?";
    const NameWatch watch(connection.get(), NotificationServer::kName,
                          [&](const std::string& now) { owner = now; });
    server.reset();
    ASSERT_TRUE(runUntil([&] { return owner.empty(); }));
    settle();
  }
  // Until everything said has been heard, and what that led to, too.
  void settle() const {
    for (int i = 0; i < 4; ++i) {
      askBus(connection.get(), "GetId");
      if (server) askBus(server->connection.get(), "GetId");
      runUntilIdle();
    }
  }

 private:
  const PrivateBus& bus_;

 public:
  const BusPtr connection;
  std::vector<std::string> log;
  std::unique_ptr<NotificationServer> server;
};

}  // namespace kelvane
