#include "platform/linux/glib/property_changes.h"

#include <utility>

#include <systemd/sd-bus.h>

namespace kelvane {
namespace {

void readChanges(sd_bus_message* message, const PropertyChanges::Handler& handler) {
  if (sd_bus_message_skip(message, "s") < 0) return;  // the interface, which was matched
  const auto changed = readScalars(message);
  if (!changed || sd_bus_message_enter_container(message, 'a', "s") < 0) return;
  handler(*changed, sd_bus_message_at_end(message, 0) == 0);
}

}  // namespace

PropertyChanges::PropertyChanges(BusConnection* connection, const BusTarget& target,
                                 Handler handler)
    : subscription_(connection,
                    SignalSubscription::Match{target.destination, "org.freedesktop.DBus.Properties",
                                              "PropertiesChanged", target.path, target.interface},
                    [handler = std::move(handler)](sd_bus_message* message) {
                      readChanges(message, handler);
                    }) {}

}  // namespace kelvane
