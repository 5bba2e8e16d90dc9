// The item on the bus, org.kde.StatusNotifierItem, on a connection of its own: it is shown by
// connecting and hidden by leaving the bus, which every host understands. Main thread.
//
// It registers under the unique name of its connection: every host takes that, and there is no name
// to own first.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <glib.h>

#include "platform/geometry.h"
#include "platform/linux/drawing/bitmap.h"
#include "platform/linux/glib/bus.h"
#include "platform/linux/glib/exported_object.h"
#include "platform/linux/tray/dbus_menu.h"
#include "platform/linux/tray/host_profile.h"
#include "platform/portable/run_loop_queue.h"

namespace kelvane {

class StatusNotifierItem {
 public:
  struct Events {
    // The user asked for the item's menu; in the host's coordinates.
    std::function<void(Point)> activated;
    std::function<void(const std::string&)> activationToken;
    // The connection stands or has gone; tells nothing of the host.
    std::function<void()> connectionChanged;
  };

  // Nothing happens before `connect`. The menu outlives the item.
  StatusNotifierItem(RunLoopQueue& loop, std::string busAddress, DbusMenu& menu, Events events);
  ~StatusNotifierItem();
  StatusNotifierItem(const StatusNotifierItem&) = delete;
  StatusNotifierItem& operator=(const StatusNotifierItem&) = delete;

  // Connects, and connects again a few times when the bus hangs up. Nothing when it is under way.
  void connect();
  // Leaves the bus.
  void disconnect();
  bool isConnected() const { return connection_ != nullptr; }

  // Exports item and menu as `profile` wants them, then registers with the watcher. Again for every
  // new watcher. Needs a connection. The menu and the content, by `fillIn`, are set while that is
  // under way: no host can read it before the caller returns to the main loop.
  void registerFor(const HostProfile& profile, const std::function<void()>& fillIn);
  bool isRegistered() const { return isRegistered_; }

  struct Content {
    std::vector<Bitmap> icon;  // the same picture in one or more sizes; an empty one is none
    std::string label;
    // Absent: the item has no tool tip at all. Markup is the caller's matter.
    std::optional<std::string> toolTip;
  };
  // Hosts are told of what really differs from before.
  void setContent(const Content& content);

 private:
  void stateChanged();
  void connectionLost();
  void retryLater(double seconds, void (StatusNotifierItem::*what)());
  void callWatcher();
  void handle(const ExportedObject::Call& call);
  BusWrite property(std::string_view name) const;
  void emit(const char* signal, const BusWrite& write = nullptr) const;

  RunLoopQueue& loop_;
  std::string busAddress_;
  DbusMenu& menu_;
  Events events_;

  BusPtr opening_;
  BusPtr connection_;  // once it is ready
  BusObservation stateChanges_;
  std::unique_ptr<ExportedObject> object_;
  std::unique_ptr<BusCalls> calls_;
  std::unique_ptr<Timer> retry_;
  int failures_ = 0;
  bool isRegistered_ = false;
  bool hasLabel_ = false;
  bool isReadAtOnce_ = false;  // all of it, for each signal
  bool isQuiet_ = false;       // nobody has read what changes

  // A picture as the bus carries it; made once, however often it is read.
  struct Pixmap {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> argb;
    bool operator==(const Pixmap&) const = default;
  };
  static std::vector<Pixmap> pixmapsOf(const std::vector<Bitmap>& sizes);
  static void writePixmaps(BusWriter& value, const std::vector<Pixmap>& pixmaps);

  std::vector<Pixmap> icon_;
  std::string label_;
  std::optional<std::string> toolTip_;
};

}  // namespace kelvane
