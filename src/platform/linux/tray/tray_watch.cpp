#include "platform/linux/tray/tray_watch.h"

#include <utility>

#include "platform/linux/tray/watcher.h"

namespace kelvane {
namespace {

constexpr const char* kPath = "/StatusNotifierWatcher";

// A watcher that does not say is believed to have a host: some have one built in.
bool hasHost(GVariant* properties) {
  gboolean has = TRUE;
  g_variant_lookup(properties, "IsStatusNotifierHostRegistered", "b", &has);
  return has != FALSE;
}

bool isTray(GVariant* properties) {
  const GVariantPtr items(
      g_variant_lookup_value(properties, "RegisteredStatusNotifierItems", nullptr));
  return items != nullptr;
}

}  // namespace

TrayWatch::TrayWatch(BusConnection* bus, Handler handler)
    : bus_(shareBus(bus)),
      handler_(std::move(handler)),
      name_(bus, Watcher::kName, [this](const std::string& owner) { ownerChanged(owner); }) {}

void TrayWatch::ownerChanged(const std::string& owner) {
  owner_ = owner;
  question_.reset();
  news_.reset();
  const Handler tell = handler_;
  if (owner.empty()) return tell(false);
  // Hosts and items that come and go: either tells that there is something new to be asked.
  news_ = std::make_unique<SignalSubscription>(
      bus_.get(), SignalSubscription::Match{owner, Watcher::kName, "", kPath, ""},
      [this](const char*, const char*, GVariant*) { ask(); });
  ask();
}

void TrayWatch::ask() {
  question_ = std::make_unique<BusCalls>();
  question_->getAllProperties(bus_.get(), {owner_, kPath, Watcher::kName}, [this](BusReply reply) {
    if (!reply && !reply.isRefused()) return;
    const Handler tell = handler_;
    tell(reply && isTray(reply.value.get()) && hasHost(reply.value.get()));
  });
}

}  // namespace kelvane
