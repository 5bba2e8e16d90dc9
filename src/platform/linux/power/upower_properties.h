// From UPower's properties on the bus to plain values. Pure, any thread.
#pragma once

#include <glib.h>

#include "platform/linux/power/upower_snapshot.h"

namespace kelvane {

// Takes over what an a{sv} holds of a device. A property of another type than UPower's, not a
// number, negative or beyond any plausible size becomes absent; one that the dictionary lacks stays
// as it is.
void applyProperties(UPowerDevice& device, GVariant* properties);

}  // namespace kelvane
