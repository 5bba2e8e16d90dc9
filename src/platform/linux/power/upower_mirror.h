// A copy of what UPower publishes on the system bus, kept true by its signals. Main thread; nothing
// here blocks, and reading the copy makes no bus call.
//
// Heard are: devices coming and going, the composite DisplayDevice, and line power. DisplayDevice
// speaks for the supplies of its own type, so those are not listened to: UPower's own polls change
// their UpdateTime twice a minute, which would wake us for nothing. They are asked again when
// something heard has changed; not so for DisplayDevice's level and times alone while it is far
// from full, because then they have nothing to add: their own level in the copy may be an older
// one. Supplies of another type than DisplayDevice's (the laptop's battery beside a UPS) are
// listened to themselves.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include <glib.h>

#include "platform/linux/glib/bus.h"
#include "platform/linux/glib/property_changes.h"
#include "platform/linux/power/upower_snapshot.h"

namespace kelvane {

class UPowerMirror {
 public:
  // pending: not known yet; absent: no UPower, or it doesn't answer; ready: the snapshot is
  // complete.
  enum class Status { pending, absent, ready };

  // Starts mirroring. `changed` is called whenever the status or the snapshot has become another,
  // and after the computer woke up. A UPower that is not running, but that the bus can start, is
  // started once, now; never later.
  UPowerMirror(BusConnection* systemBus, std::function<void()> changed);
  ~UPowerMirror();
  UPowerMirror(const UPowerMirror&) = delete;
  UPowerMirror& operator=(const UPowerMirror&) = delete;

  Status status() const { return status_; }
  // Null unless ready; valid until `changed` is called.
  const UPowerSnapshot* snapshot() const { return status_ == Status::ready ? &snapshot_ : nullptr; }

 private:
  struct Device {
    UPowerDevice now;
    std::unique_ptr<PropertyChanges> changes;
    bool isAsked = false;   // a GetAll is under way
    bool askAgain = false;  // something changed meanwhile
  };

  void ownerChanged(const std::string& owner);
  void startOnce();
  void readAll();
  void ask(const std::string& path);
  void listen(const std::string& path, Device& device);
  void answered(const std::string& path, const BusReply& reply);
  void enumerated(const BusReply& reply);
  void propertiesChanged(const std::string& path, const ScalarProperties& changed,
                         bool areOthersInvalid);
  void deviceCameOrWent(const std::string& member, GVariant* parameters);
  void askSupplies();
  void listenWhereNeeded();
  void finish();
  void setAbsent();
  void awoke();

  BusPtr bus_;
  std::function<void()> changed_;
  Status status_ = Status::pending;
  UPowerSnapshot snapshot_;

  std::string owner_;  // unique name; empty while there is none
  bool mayStart_ = true;
  bool hasList_ = false;  // EnumerateDevices was answered
  bool tellAnyway_ = false;
  int unanswered_ = 0;
  std::map<std::string, Device> devices_;  // by object path, DisplayDevice among them
  std::unique_ptr<BusCalls> calls_;        // of this owner
  std::unique_ptr<SignalSubscription> comingsAndGoings_;
  std::unique_ptr<SignalSubscription> waking_;
  std::unique_ptr<NameWatch> name_;
  BusObservation stateChanges_;
};

}  // namespace kelvane
