#include "programs/kelvane-commands/doctor/bus_probe.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

namespace kelvane {
namespace {

constexpr int kPatience = 1000;  // milliseconds

// Without an address the library would start a bus, or ask the display for one.
bool isSessionBusNamed() {
  const char* address = g_getenv("DBUS_SESSION_BUS_ADDRESS");
  if (address && *address) return !std::string_view(address).starts_with("autolaunch:");
  const GCharPtr socket(g_build_filename(g_get_user_runtime_dir(), "bus", nullptr));
  return g_file_test(socket.get(), G_FILE_TEST_EXISTS);
}

struct Joining {
  GObjectPtr<GDBusConnection> connection;
  GErrorPtr error;
  bool isDone = false;
};

void joined(GObject*, GAsyncResult* result, gpointer data) {
  // The one who waits may have given up.
  const std::unique_ptr<std::weak_ptr<Joining>> waiting(static_cast<std::weak_ptr<Joining>*>(data));
  GError* error = nullptr;
  GObjectPtr<GDBusConnection> connection(g_bus_get_finish(result, &error));
  GErrorPtr owned(error);
  if (const auto joining = waiting->lock())
    *joining = {std::move(connection), std::move(owned), true};
}

}  // namespace

bool waitASecond(const std::function<bool()>& condition) {
  bool isLate = false;
  const guint timeout = g_timeout_add(
      kPatience,
      [](gpointer late) -> gboolean {
        *static_cast<bool*>(late) = true;
        return G_SOURCE_CONTINUE;
      },
      &isLate);
  while (!condition() && !isLate) g_main_context_iteration(nullptr, TRUE);
  g_source_remove(timeout);
  return condition();
}

BusProbe::BusProbe(GBusType type) {
  if (type == G_BUS_TYPE_SESSION && !isSessionBusNamed()) {
    problem_ = "nothing names its address";
    return;
  }
  const auto joining = std::make_shared<Joining>();
  g_bus_get(type, nullptr, joined, new std::weak_ptr<Joining>(joining));
  if (!waitASecond([&] { return joining->isDone; })) {
    problem_ = "it does not answer";
    return;
  }
  connection_ = std::move(joining->connection);
  if (connection_)
    g_dbus_connection_set_exit_on_close(connection_.get(), FALSE);
  else
    problem_ = joining->error->message;
}

Presence BusProbe::presence(const std::string& name) {
  if (const auto reply = callBus("NameHasOwner", g_variant_new("(s)", name.c_str()), "(b)")) {
    gboolean hasOwner = FALSE;
    g_variant_get(reply.get(), "(b)", &hasOwner);
    if (hasOwner) return Presence::running;
  }
  const auto reply = callBus("ListActivatableNames", nullptr, "(as)");
  if (!reply) return Presence::absent;
  const GVariantPtr names(g_variant_get_child_value(reply.get(), 0));
  return std::ranges::count(textsOf(names.get()), name) > 0 ? Presence::startable
                                                            : Presence::absent;
}

std::optional<std::uint32_t> BusProbe::processOf(const std::string& name) {
  const auto reply =
      callBus("GetConnectionUnixProcessID", g_variant_new("(s)", name.c_str()), "(u)");
  if (!reply) return std::nullopt;
  std::uint32_t process = 0;
  g_variant_get(reply.get(), "(u)", &process);
  return process;
}

void BusProbe::turnTo(BusCalls::Target service) {
  service_ = std::move(service);
  deadline_ = g_get_monotonic_time() + std::int64_t{kPatience} * 1000;
}

GVariantPtr BusProbe::call(const char* method, GVariant* arguments, const char* replyType) {
  return callAt(service_.path, service_.interface.c_str(), method, arguments, replyType);
}

GVariantPtr BusProbe::callAt(const std::string& path, const char* interface, const char* method,
                             GVariant* arguments, const char* replyType) {
  const auto left = (deadline_ - g_get_monotonic_time()) / 1000;
  return GVariantPtr(g_dbus_connection_call_sync(
      connection(), service_.destination.c_str(), path.c_str(), interface, method, arguments,
      G_VARIANT_TYPE(replyType), G_DBUS_CALL_FLAGS_NO_AUTO_START,
      static_cast<int>(std::max<std::int64_t>(left, 1)), nullptr, nullptr));
}

GVariantPtr BusProbe::property(const char* name) {
  const auto reply = callAt(service_.path, "org.freedesktop.DBus.Properties", "Get",
                            g_variant_new("(ss)", service_.interface.c_str(), name), "(v)");
  if (!reply) return nullptr;
  const GVariantPtr boxed(g_variant_get_child_value(reply.get(), 0));
  return GVariantPtr(g_variant_get_variant(boxed.get()));
}

GVariantPtr BusProbe::callBus(const char* method, GVariant* arguments, const char* replyType) {
  return GVariantPtr(g_dbus_connection_call_sync(
      connection(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method,
      arguments, G_VARIANT_TYPE(replyType), G_DBUS_CALL_FLAGS_NONE, kPatience, nullptr, nullptr));
}

std::vector<std::string> textsOf(GVariant* array) {
  std::vector<std::string> texts;
  if (!g_variant_is_of_type(array, G_VARIANT_TYPE_STRING_ARRAY)) return texts;
  for (gsize i = 0; i < g_variant_n_children(array); ++i) {
    const char* text = nullptr;
    g_variant_get_child(array, i, "&s", &text);
    texts.emplace_back(text);
  }
  return texts;
}

}  // namespace kelvane
