#include "platform/linux/power/waking.h"

#include <utility>

namespace kelvane {

std::unique_ptr<SignalSubscription> listenForWaking(BusConnection* systemBus,
                                                    std::function<void()> awoke) {
  return std::make_unique<SignalSubscription>(
      systemBus,
      SignalSubscription::Match{"org.freedesktop.login1", "org.freedesktop.login1.Manager",
                                "PrepareForSleep", "/org/freedesktop/login1", ""},
      [awoke = std::move(awoke)](const char*, const char*, GVariant* parameters) {
        if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(b)"))) return;
        gboolean isGoingToSleep = FALSE;
        g_variant_get(parameters, "(b)", &isGoingToSleep);
        if (!isGoingToSleep) awoke();
      });
}

}  // namespace kelvane
