#include "platform/linux/glib/bus.h"

#include <utility>

namespace kelvane {
namespace {

bool isRefusal(const GError* error) {
  if (error->domain != G_DBUS_ERROR) return false;
  switch (error->code) {
    case G_DBUS_ERROR_UNKNOWN_METHOD:
    case G_DBUS_ERROR_UNKNOWN_OBJECT:
    case G_DBUS_ERROR_UNKNOWN_INTERFACE:
    case G_DBUS_ERROR_INVALID_ARGS:  // what GLib's services say of an interface they don't know
      return true;
    default:
      return false;
  }
}

const char* orNull(const std::string& text) { return text.empty() ? nullptr : text.c_str(); }

void finishCall(GObject* source, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<BusCalls::Done> done(static_cast<BusCalls::Done*>(data));
  GError* rawError = nullptr;
  GVariant* rawValue = g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, &rawError);
  const GErrorPtr error(rawError);
  BusReply reply{GVariantPtr(rawValue), error ? error->message : "",
                 error && isRefusal(error.get())};
  // Whoever asked is gone.
  if (error && g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_CANCELLED)) return;
  (*done)(std::move(reply));
}

}  // namespace

BusCalls::BusCalls() : cancellable_(g_cancellable_new()) {}

BusCalls::~BusCalls() { g_cancellable_cancel(cancellable_.get()); }

void BusCalls::call(GDBusConnection* connection, const Target& target, const char* method,
                    GVariant* arguments, const char* replyType, Done done, bool mayStart,
                    int timeoutMilliseconds) {
  g_dbus_connection_call(connection, orNull(target.destination), target.path.c_str(),
                         target.interface.c_str(), method, arguments, G_VARIANT_TYPE(replyType),
                         mayStart ? G_DBUS_CALL_FLAGS_NONE : G_DBUS_CALL_FLAGS_NO_AUTO_START,
                         timeoutMilliseconds, cancellable_.get(), finishCall,
                         new Done(std::move(done)));
}

void BusCalls::getProperty(GDBusConnection* connection, const Target& target, const char* property,
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

void BusCalls::getAllProperties(GDBusConnection* connection, const Target& target, Done done) {
  const Target properties{target.destination, target.path, "org.freedesktop.DBus.Properties"};
  call(connection, properties, "GetAll", g_variant_new("(s)", target.interface.c_str()), "(a{sv})",
       [done = std::move(done)](BusReply reply) {
         if (reply) reply.value.reset(g_variant_get_child_value(reply.value.get(), 0));
         done(std::move(reply));
       });
}

SignalSubscription::SignalSubscription(GDBusConnection* connection, const Match& match,
                                       Handler handler)
    : connection_(shareObject(connection)) {
  id_ = g_dbus_connection_signal_subscribe(
      connection, orNull(match.sender), orNull(match.interface), orNull(match.member),
      orNull(match.path), orNull(match.firstArgument), G_DBUS_SIGNAL_FLAGS_NONE,
      [](GDBusConnection*, const gchar*, const gchar* path, const gchar*, const gchar* member,
         GVariant* parameters,
         gpointer data) { (*static_cast<Handler*>(data))(path, member, parameters); },
      new Handler(std::move(handler)), [](gpointer data) { delete static_cast<Handler*>(data); });
}

SignalSubscription::~SignalSubscription() {
  g_dbus_connection_signal_unsubscribe(connection_.get(), id_);
}

NameWatch::NameWatch(GDBusConnection* connection, std::string name, Handler handler)
    : calls_(std::make_unique<BusCalls>()),
      owner_(std::make_shared<std::optional<std::string>>()),
      handler_(std::move(handler)) {
  const BusCalls::Target bus{"org.freedesktop.DBus", "/org/freedesktop/DBus",
                             "org.freedesktop.DBus"};
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
