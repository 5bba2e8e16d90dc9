#include "platform/linux/application/running_application.h"

#include "platform/linux/application/application_service.h"
#include "platform/linux/glib/bus.h"

namespace kelvane {
namespace {

constexpr int kAnswerTimeout = 3000;  // milliseconds
constexpr int kEndTimeout = 5000;

GVariant* noPlatformData() { return g_variant_new_array(G_VARIANT_TYPE("{sv}"), nullptr, 0); }

RunningAnswer ask(GDBusConnection* bus, const char* method, GVariant* arguments) {
  GError* rawError = nullptr;
  const GVariantPtr reply(g_dbus_connection_call_sync(
      bus, ApplicationService::kName, ApplicationService::kPath, "org.freedesktop.Application",
      method, arguments, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, kAnswerTimeout, nullptr,
      &rawError));
  const GErrorPtr error(rawError);
  if (reply) return RunningAnswer::done;
  // "No reply" is what the bus says of a process that ended before it answered.
  for (const GDBusError gone :
       {G_DBUS_ERROR_SERVICE_UNKNOWN, G_DBUS_ERROR_NAME_HAS_NO_OWNER, G_DBUS_ERROR_NO_REPLY})
    if (g_error_matches(error.get(), G_DBUS_ERROR, gone)) return RunningAnswer::notRunning;
  return RunningAnswer::failed;
}

}  // namespace

RunningAnswer activateRunning(GDBusConnection* bus) {
  return ask(bus, "Activate", g_variant_new("(@a{sv})", noPlatformData()));
}

RunningAnswer quitRunning(GDBusConnection* bus) {
  bool isGone = false;
  // Listens before it asks.
  const NameWatch watch(bus, ApplicationService::kName,
                        [&](const std::string& owner) { isGone = owner.empty(); });
  const RunningAnswer answer =
      ask(bus, "ActivateAction",
          g_variant_new("(s@av@a{sv})", ApplicationService::kQuit,
                        g_variant_new_array(G_VARIANT_TYPE_VARIANT, nullptr, 0), noPlatformData()));
  if (answer != RunningAnswer::done) return answer;

  bool isLate = false;
  const guint timeout = g_timeout_add(
      kEndTimeout,
      [](gpointer late) -> gboolean {
        *static_cast<bool*>(late) = true;
        return G_SOURCE_CONTINUE;
      },
      &isLate);
  while (!isGone && !isLate) g_main_context_iteration(nullptr, TRUE);
  g_source_remove(timeout);
  return isGone ? RunningAnswer::done : RunningAnswer::failed;
}

}  // namespace kelvane
