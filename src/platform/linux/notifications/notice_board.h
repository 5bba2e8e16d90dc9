// Short notices through the session's notification server, org.freedesktop.Notifications. Main
// thread; nothing here blocks.
//
// Each identifier has at most one notice. A server names a notice only in its answer, so while an
// answer is awaited the identifier's latest wish is kept, and carried out when the name is known.
// Nothing the server says is trusted, and none has to be there: the bus may start one, and what no
// server has shown yet is shown by one that comes within a minute, as during login.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <glib.h>

#include "platform/linux/glib/bus.h"
#include "platform/run_loop.h"

namespace kelvane {

struct Notice {
  std::string summary;
  std::string body;  // plain text, not markup; empty: none
  std::string icon;  // a name of the icon theme
  // A critical notice stays until somebody closes it.
  bool isCritical = false;
};

// shown: the server has answered. ended: it was closed, but not by us; or there is nobody to show
// it, or nothing more can be heard of it. Nothing comes after that.
enum class NoticeEvent { shown, ended };

class NoticeBoard {
 public:
  using Listener = std::function<void(NoticeEvent)>;

  // The run loop, which tells the time, outlives the board.
  NoticeBoard(BusConnection* sessionBus, const RunLoop& runLoop);
  NoticeBoard(const NoticeBoard&) = delete;
  NoticeBoard& operator=(const NoticeBoard&) = delete;

  // Shows a notice, in place of the one with the same identifier, whose listener hears no more.
  // The listener is never called inside this call; it may post and close.
  void post(const std::string& identifier, Notice notice, Listener listener = nullptr);
  // Takes it away, at once or as soon as that is possible; its listener hears no more.
  void close(const std::string& identifier);

 private:
  struct Entry {
    std::optional<Notice> wanted;  // absent: it is to be closed
    Listener listener;
    Date posted;
    bool isSent = false;   // `wanted` is what the server was told last
    bool isAsked = false;  // the server owes us an answer
    std::uint32_t id = 0;  // the server's; 0: none that we know
  };

  void carryOut(const std::string& identifier);
  void send(const std::string& identifier, Entry& entry);
  BusCalls::Target server() const;
  void answered(const std::string& identifier, const BusReply& reply);
  void closeOnServer(std::uint32_t id);
  void closedByServer(std::uint32_t id);
  void ownerChanged(const std::string& owner);
  // What it has not shown is kept for another one; answers whom to tell.
  std::vector<Listener> forgetServer();
  void forgetOutdated();
  void followClosing();

  BusPtr bus_;
  const RunLoop& runLoop_;
  std::map<std::string, Entry> entries_;
  std::optional<std::string> owner_;  // unique name; "" for none, absent while it is not known
  std::unique_ptr<BusCalls> calls_;   // to this owner
  std::unique_ptr<SignalSubscription> closing_;  // while there is something to be closed
  NameWatch watch_;
};

}  // namespace kelvane
