// The computer's waking up, as login1 tells it on the system bus. Main thread.
#pragma once

#include <functional>
#include <memory>

#include <glib.h>

#include "platform/linux/glib/bus.h"

namespace kelvane {

// `awoke` is called after each sleep, until what is answered goes.
std::unique_ptr<SignalSubscription> listenForWaking(BusConnection* systemBus,
                                                    std::function<void()> awoke);

}  // namespace kelvane
