// The contents of messages as variants of GLib, which the adaptors speak, and back. Main thread.
#pragma once

#include <memory>

#include <glib.h>

#include "platform/linux/glib/bus_connection.h"

namespace kelvane {

struct BusMessageDeleter {
  void operator()(sd_bus_message* message) const;
};
using BusMessagePtr = std::unique_ptr<sd_bus_message, BusMessageDeleter>;

// A call to be sent; null when a name in it is none. The service is not started for it unless
// `mayStart` says so. `arguments` is a tuple, may be floating, or null for none.
BusMessagePtr newCall(const BusConnection& bus, const BusTarget& target, const char* method,
                      GVariant* arguments, bool mayStart);

// What a call was answered; a value of another type than `replyType` is an error.
BusReply replyOf(sd_bus_message* answer, const char* replyType);

// The whole body as a tuple; null when it holds what has no variant, a file descriptor.
GVariantPtr bodyOf(sd_bus_message* message);

// Adds a value, or the parts of a tuple; null has none. False when the bus knows no such type.
bool appendValue(sd_bus_message* message, GVariant* value);
bool appendTuple(sd_bus_message* message, GVariant* tuple);

}  // namespace kelvane
