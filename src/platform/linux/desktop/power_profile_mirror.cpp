#include "platform/linux/desktop/power_profile_mirror.h"

#include <algorithm>
#include <utility>

namespace kelvane {
namespace {

constexpr const char* kProfile = "ActiveProfile";

}  // namespace

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
    service.calls->getProperty(bus, {owner, service.path, service.name}, kProfile,
                               [this, &service](const BusReply& reply) {
                                 setProfile(service,
                                            reply ? scalarOf(reply.value.get()) : BusScalar());
                               });
  };
  service.changes = std::make_unique<PropertyChanges>(
      bus, BusTarget{owner, service.path, service.name},
      [this, &service, read](const ScalarProperties& changed, bool areOthersInvalid) {
        const auto profile = std::ranges::find(changed, kProfile, &ScalarProperty::first);
        if (profile != changed.end())
          setProfile(service, profile->second);
        else if (areOthersInvalid)
          read();
      });
  read();
}

void PowerProfileMirror::setProfile(Service& service, const BusScalar& value) {
  service.isPowerSaver = value == BusScalar("power-saver");
  decide();
}

void PowerProfileMirror::decide() {
  const bool now = std::ranges::any_of(services_, &Service::isPowerSaver);
  if (std::exchange(isPowerSaver_, now) != now && changed_) changed_();
}

}  // namespace kelvane
