// The changes that an object tells of its properties, org.freedesktop.DBus.Properties'
// PropertiesChanged. Main thread; destroying it ends the listening.
#pragma once

#include <functional>
#include <string>

#include "platform/linux/glib/bus.h"
#include "platform/linux/glib/bus_scalar.h"

namespace kelvane {

class PropertyChanges {
 public:
  // The new values, valid during the call, and whether others have changed whose values have to be
  // asked for.
  using Handler = std::function<void(const ScalarProperties& changed, bool areOthersInvalid)>;

  // Of one interface of an object. The handler may destroy the listening.
  PropertyChanges(BusConnection* connection, const BusTarget& target, Handler handler);

 private:
  SignalSubscription subscription_;
};

}  // namespace kelvane
