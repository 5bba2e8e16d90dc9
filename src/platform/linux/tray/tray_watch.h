// Follows whether anybody shows the session's tray items. A watcher alone does not: it may be of
// another desktop, or have no host that shows what it collects. Main thread, never polls; a handle
// that is destroyed calls no more.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/linux/glib/bus.h"

namespace kelvane {

class TrayWatch {
 public:
  // Called first with what is so at the time, then when it may have changed; not while a watcher is
  // there that has not answered yet. The handler may destroy the watch.
  using Handler = std::function<void(bool isShown)>;

  TrayWatch(BusConnection* bus, Handler handler);

 private:
  void ownerChanged(const std::string& owner);
  void ask();

  BusPtr bus_;
  Handler handler_;
  std::string owner_;
  std::unique_ptr<BusCalls> question_;
  std::unique_ptr<SignalSubscription> news_;
  NameWatch name_;
};

}  // namespace kelvane
