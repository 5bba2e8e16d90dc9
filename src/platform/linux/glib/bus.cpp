#include "platform/linux/glib/bus.h"

#include <algorithm>
#include <cstring>
#include <string_view>
#include <utility>

#include <systemd/sd-bus.h>

#include "platform/linux/glib/bus_message.h"

namespace kelvane {
namespace {

constexpr const char* kBusName = "org.freedesktop.DBus";

bool isUniqueName(const std::string& name) { return name.starts_with(':'); }

}  // namespace

struct BusCalls::Pending {
  Pending(BusCalls& calls, const char* type, Done whenDone)
      : owner(&calls), replyType(type), done(std::move(whenDone)) {}
  ~Pending() {
    if (idle) g_source_remove(idle);
  }
  Pending(const Pending&) = delete;
  Pending& operator=(const Pending&) = delete;

  BusCalls* owner;
  std::string replyType;
  Done done;
  BusPtr connection;
  BusSlotPtr slot;
  guint idle = 0;     // of a call that could not be sent, which is told later all the same
  std::string error;  // of that
};

BusCalls::BusCalls() = default;

BusCalls::~BusCalls() = default;

void BusCalls::call(BusConnection* connection, const Target& target, const char* method,
                    GVariant* arguments, const char* replyType, Done done, bool mayStart,
                    int timeoutMilliseconds) {
  Pending& pending =
      *pending_.emplace_back(std::make_unique<Pending>(*this, replyType, std::move(done)));
  pending.connection = shareBus(connection);
  const BusMessagePtr message = newCall(*connection, target, method, arguments, mayStart);
  if (!message) return fail(pending, "the call can't be made");
  sd_bus_slot* slot = nullptr;
  const int result = sd_bus_call_async(
      connection->handle(), &slot, message.get(),
      [](sd_bus_message* answer, void* data, sd_bus_error*) {
        auto* each = static_cast<Pending*>(data);
        // The callback may destroy the calls.
        const auto own = each->owner->take(each);
        own->done(replyOf(answer, own->replyType.c_str()));
        return 0;
      },
      &pending, static_cast<std::uint64_t>(timeoutMilliseconds) * 1000);
  pending.slot.reset(slot);
  if (result < 0) fail(pending, std::strerror(-result));
}

std::unique_ptr<BusCalls::Pending> BusCalls::take(const Pending* pending) {
  const auto found = std::ranges::find(pending_, pending, &std::unique_ptr<Pending>::get);
  auto own = std::move(*found);
  pending_.erase(found);
  return own;
}

void BusCalls::fail(Pending& pending, std::string error) {
  pending.error = std::move(error);
  pending.idle = g_idle_add(
      [](gpointer data) -> gboolean {
        auto* each = static_cast<Pending*>(data);
        const auto own = each->owner->take(each);
        own->idle = 0;
        own->done({nullptr, own->error, ""});
        return G_SOURCE_REMOVE;
      },
      &pending);
}

void BusCalls::getProperty(BusConnection* connection, const Target& target, const char* property,
                           Done done) {
  const Target properties{target.destination, target.path, "org.freedesktop.DBus.Properties"};
  call(connection, properties, "Get", g_variant_new("(ss)", target.interface.c_str(), property),
       "(v)", [done = std::move(done)](BusReply reply) {
         if (reply) {
           const GVariantPtr boxed(g_variant_get_child_value(reply.value.get(), 0));
           reply.value.reset(g_variant_get_variant(boxed.get()));
         }
         done(std::move(reply));
       });
}

void BusCalls::getAllProperties(BusConnection* connection, const Target& target, Done done) {
  const Target properties{target.destination, target.path, "org.freedesktop.DBus.Properties"};
  call(connection, properties, "GetAll", g_variant_new("(s)", target.interface.c_str()), "(a{sv})",
       [done = std::move(done)](BusReply reply) {
         if (reply) reply.value.reset(g_variant_get_child_value(reply.value.get(), 0));
         done(std::move(reply));
       });
}

struct SignalSubscription::Listener {
  Reader reader;
  // For a service that is known by its name. What is sent to us alone passes by the bus's rules, so
  // it may come from anyone.
  std::unique_ptr<NameWatch> name;
  std::optional<std::string> owner;
};

SignalSubscription::SignalSubscription(BusConnection* connection, const Match& match,
                                       Handler handler)
    : SignalSubscription(connection, match,
                         [handler = std::move(handler)](sd_bus_message* message) {
                           if (const GVariantPtr body = bodyOf(message))
                             handler(sd_bus_message_get_path(message),
                                     sd_bus_message_get_member(message), body.get());
                         }) {}

SignalSubscription::SignalSubscription(BusConnection* connection, const Match& match, Reader reader)
    : listener_(std::make_shared<Listener>()), connection_(shareBus(connection)) {
  listener_->reader = std::move(reader);
  if (!match.sender.empty() && !isUniqueName(match.sender) && match.sender != kBusName)
    listener_->name = std::make_unique<NameWatch>(
        connection, match.sender,
        [listener = listener_.get()](const std::string& owner) { listener->owner = owner; });

  std::string rule = "type='signal'";
  const auto add = [&](const char* key, const std::string& value) {
    if (!value.empty()) rule += std::string(",") + key + "='" + value + "'";
  };
  add("sender", match.sender);
  add("interface", match.interface);
  add("member", match.member);
  add("path", match.path);
  add("arg0", match.firstArgument);
  sd_bus_slot* slot = nullptr;
  sd_bus_add_match_async(
      connection->handle(), &slot, rule.c_str(),
      [](sd_bus_message* message, void* data, sd_bus_error*) {
        // The handler may destroy the subscription.
        const auto listener = static_cast<SignalSubscription*>(data)->listener_;
        if (listener->name && listener->owner != sd_bus_message_get_sender(message)) return 0;
        sd_bus_message_rewind(message, 1);
        listener->reader(message);
        return 0;
      },
      // A bus that takes no more rules is no reason to leave it, which is what the library would
      // do.
      [](sd_bus_message*, void*, sd_bus_error*) { return 0; }, this);
  slot_.reset(slot);
}

SignalSubscription::~SignalSubscription() = default;

NameWatch::NameWatch(BusConnection* connection, std::string name, Handler handler)
    : calls_(std::make_unique<BusCalls>()),
      owner_(std::make_shared<std::optional<std::string>>()),
      handler_(std::move(handler)) {
  const BusCalls::Target bus{kBusName, "/org/freedesktop/DBus", kBusName};
  const auto tell = [this](const std::string& owner) {
    if (*owner_ == owner) return;
    *owner_ = owner;
    // The handler may destroy this watch.
    const Handler call = handler_;
    call(owner);
  };
  changes_ = std::make_unique<SignalSubscription>(
      connection,
      SignalSubscription::Match{bus.destination, bus.interface, "NameOwnerChanged", bus.path, name},
      [tell](const char*, const char*, GVariant* parameters) {
        if (!g_variant_is_of_type(parameters, G_VARIANT_TYPE("(sss)"))) return;
        const char* owner = nullptr;
        g_variant_get(parameters, "(&s&s&s)", nullptr, nullptr, &owner);
        tell(owner);
      });
  calls_->call(connection, bus, "GetNameOwner", g_variant_new("(s)", name.c_str()), "(s)",
               [tell](const BusReply& reply) {
                 const char* owner = "";
                 if (reply) g_variant_get(reply.value.get(), "(&s)", &owner);
                 tell(owner);
               });
}

NameWatch::~NameWatch() = default;

}  // namespace kelvane
