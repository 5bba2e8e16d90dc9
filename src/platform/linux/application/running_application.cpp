#include "platform/linux/application/running_application.h"

#include "platform/linux/application/application_service.h"
#include "platform/linux/glib/bus.h"

namespace kelvane {
namespace {

constexpr int kAnswerTimeout = 3000;  // milliseconds
constexpr int kEndTimeout = 5000;

GVariant* noPlatformData() { return g_variant_new_array(G_VARIANT_TYPE("{sv}"), nullptr, 0); }

RunningAnswer ask(BusConnection* bus, const char* method, GVariant* arguments) {
  const BusReply reply = bus->callAndWait(
      {ApplicationService::kName, ApplicationService::kPath, "org.freedesktop.Application"}, method,
      arguments, "r", kAnswerTimeout);
  if (reply) return RunningAnswer::done;
  // "No reply" is what the bus says of a process that ended before it answered.
  for (const char* gone : {"ServiceUnknown", "NameHasNoOwner", "NoReply"})
    if (reply.errorName == std::string("org.freedesktop.DBus.Error.") + gone)
      return RunningAnswer::notRunning;
  return RunningAnswer::failed;
}

}  // namespace

RunningAnswer activateRunning(BusConnection* bus) {
  return ask(bus, "Activate", g_variant_new("(@a{sv})", noPlatformData()));
}

RunningAnswer quitRunning(BusConnection* bus) {
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
