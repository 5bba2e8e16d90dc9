// Follows the tray's watcher, org.kde.StatusNotifierWatcher, for as long as it lives: who owns the
// name, and which host that is. It waits for signals and never polls. Main thread.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include <glib.h>

#include "platform/linux/glib/bus.h"
#include "platform/linux/tray/host_profile.h"

namespace kelvane {

// What a process is called, which is how a host is known; empty when it can't be known. A process
// in another container is unknown here.
std::string nameOfProcess(std::uint32_t id);

class Watcher {
 public:
  static constexpr const char* kName = "org.kde.StatusNotifierWatcher";

  struct State {
    std::string owner;        // the unique name; empty while there is no watcher
    std::string processName;  // empty when it can't be known
    TrayHost host = TrayHost::unknown;
    bool operator==(const State&) const = default;
  };
  // Called for every new owner once its host is known, and when there is none any more.
  using Handler = std::function<void(const State&)>;

  Watcher(BusConnection* bus, Handler handler);

  const State& state() const { return state_; }

 private:
  void ownerChanged(const std::string& owner);
  void tell(State state);

  BusPtr bus_;
  Handler handler_;
  State state_;
  std::unique_ptr<BusCalls> question_;
  NameWatch watch_;
};

}  // namespace kelvane
