#include "programs/kelvane-commands/doctor/bus_probe.h"

#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>

namespace kelvane {
namespace {

constexpr int kPatience = 1000;  // milliseconds

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

BusProbe::BusProbe(BusKind kind) {
  if (busAddress(kind).empty()) {
    problem_ = "nothing names its address";
    return;
  }
  connection_ = BusConnection::share(kind, &problem_);
  if (!connection_) return;
  using State = BusConnection::State;
  if (!waitASecond([&] { return connection_->state() != State::opening; }))
    problem_ = "it does not answer";
  else if (connection_->state() == State::closed)
    problem_ = "it refuses us";
  if (!problem_.empty()) connection_.reset();
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
  return connection_
      ->callAndWait({service_.destination, path, interface}, method, arguments, replyType,
                    static_cast<int>(std::max<std::int64_t>(left, 1)))
      .value;
}

GVariantPtr BusProbe::property(const char* name) {
  const auto reply = callAt(service_.path, "org.freedesktop.DBus.Properties", "Get",
                            g_variant_new("(ss)", service_.interface.c_str(), name), "(v)");
  if (!reply) return nullptr;
  const GVariantPtr boxed(g_variant_get_child_value(reply.get(), 0));
  return GVariantPtr(g_variant_get_variant(boxed.get()));
}

GVariantPtr BusProbe::callBus(const char* method, GVariant* arguments, const char* replyType) {
  return connection_
      ->callAndWait({"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus"},
                    method, arguments, replyType, kPatience)
      .value;
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
