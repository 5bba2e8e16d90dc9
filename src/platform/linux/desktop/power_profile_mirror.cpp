#include "platform/linux/desktop/power_profile_mirror.h"

#include <algorithm>
#include <utility>

namespace kelvane {

PowerProfileMirror::PowerProfileMirror(std::function<void()> changed)
    : changed_(std::move(changed)), request_([this](BusConnection* bus) {
        if (!bus) return;
        for (Service& service : services_) follow(bus, service);
      }) {
  services_[0].name = "org.freedesktop.UPower.PowerProfiles";
  services_[0].path = "/org/freedesktop/UPower/PowerProfiles";
  services_[1].name = "net.hadess.PowerProfiles";
  services_[1].path = "/net/hadess/PowerProfiles";
}

PowerProfileMirror::~PowerProfileMirror() = default;

void PowerProfileMirror::follow(BusConnection* bus, Service& service) {
  service.owner = std::make_unique<NameWatch>(
      bus, service.name,
      [this, bus = std::shared_ptr(shareBus(bus)), &service](const std::string& owner) {
        ownerChanged(bus.get(), service, owner);
      });
}

void PowerProfileMirror::ownerChanged(BusConnection* bus, Service& service,
                                      const std::string& owner) {
  service.calls = std::make_unique<BusCalls>();
  service.changes.reset();
  service.isPowerSaver = false;
  decide();
  if (owner.empty()) return;
  const auto read = [this, bus, &service, owner] {
    service.calls->getProperty(
        bus, {owner, service.path, service.name}, "ActiveProfile",
        [this, &service](const BusReply& reply) { setProfile(service, reply.value.get()); });
  };
  service.changes = std::make_unique<SignalSubscription>(
      bus,
      SignalSubscription::Match{owner, "org.freedesktop.DBus.Properties", "PropertiesChanged",
                                service.path, service.name},
      [this, &service, read](const char*, const char*, GVariant* parameters) {
        if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(sa{sv}as)"))) return;
        const GVariantPtr changed(g_variant_get_child_value(parameters, 1));
        const GVariantPtr invalidated(g_variant_get_child_value(parameters, 2));
        const GVariantPtr profile(g_variant_lookup_value(changed.get(), "ActiveProfile", nullptr));
        if (profile)
          setProfile(service, profile.get());
        else if (g_variant_n_children(invalidated.get()) > 0)
          read();
      });
  read();
}

void PowerProfileMirror::setProfile(Service& service, GVariant* value) {
  service.isPowerSaver = value && g_variant_is_of_type(value, G_VARIANT_TYPE_STRING) &&
                         std::string_view(g_variant_get_string(value, nullptr)) == "power-saver";
  decide();
}

void PowerProfileMirror::decide() {
  const bool now = std::ranges::any_of(services_, &Service::isPowerSaver);
  if (std::exchange(isPowerSaver_, now) != now && changed_) changed_();
}

}  // namespace kelvane
