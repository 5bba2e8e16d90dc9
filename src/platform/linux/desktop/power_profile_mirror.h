// The active power profile, mirrored from the power-profiles service on the system bus: first under
// its present name org.freedesktop.UPower.PowerProfiles, then under its former one
// net.hadess.PowerProfiles. The service is never started. Main thread; nothing here blocks.
#pragma once

#include <array>
#include <functional>
#include <memory>
#include <string>

#include "platform/linux/glib/bus.h"
#include "platform/linux/glib/property_changes.h"
#include "platform/linux/glib/system_bus.h"

namespace kelvane {

class PowerProfileMirror {
 public:
  // `changed` is called each time that the answer below becomes another.
  explicit PowerProfileMirror(std::function<void()> changed);
  ~PowerProfileMirror();
  PowerProfileMirror(const PowerProfileMirror&) = delete;
  PowerProfileMirror& operator=(const PowerProfileMirror&) = delete;

  // False as well while nothing is known.
  bool isPowerSaver() const { return isPowerSaver_; }

 private:
  struct Service {
    std::string name;  // on the bus, and of the interface
    std::string path;
    bool isPowerSaver = false;
    std::unique_ptr<BusCalls> calls;
    std::unique_ptr<PropertyChanges> changes;
    std::unique_ptr<NameWatch> owner;
  };

  void follow(BusConnection* bus, Service& service);
  void ownerChanged(BusConnection* bus, Service& service, const std::string& owner);
  void setProfile(Service& service, const BusScalar& value);
  void decide();

  std::function<void()> changed_;
  bool isPowerSaver_ = false;
  std::array<Service, 2> services_;
  SystemBusRequest request_;
};

}  // namespace kelvane
