// From UPower's properties on the bus to plain values. Pure, any thread.
#pragma once

#include "platform/linux/glib/bus_scalar.h"
#include "platform/linux/power/upower_snapshot.h"

namespace kelvane {

// Takes over properties of a device. One of another type than UPower's, not a number, negative or
// beyond any plausible size becomes absent; what is not among them stays as it is.
void applyProperties(UPowerDevice& device, const ScalarProperties& properties);

}  // namespace kelvane
