#include "programs/kelvane/resident.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include <gio/gio.h>
#include <glib-unix.h>
#include <malloc.h>

#include "app/app_state.h"
#include "platform/linux/glib/glib_ptr.h"
#include "programs/kelvane/linux_computer.h"
#include "settings/migrations.h"
#include "settings/settings_keys.h"

namespace kelvane {
namespace {

constexpr double kItemShown = 0.1;  // seconds from the start
constexpr double kSettled = 5.0;

GObjectPtr<GDBusConnection> connectToSessionBus() {
  GError* rawError = nullptr;
  GObjectPtr<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, &rawError));
  const GErrorPtr error(rawError);
  if (error)
    std::fprintf(stderr, "kelvane: there is no session bus to show the item through: %s\n",
                 error->message);
  return bus;
}

gboolean quitLoop(gpointer loop) {
  static_cast<GlibRunLoop*>(loop)->quit(0);
  return G_SOURCE_CONTINUE;
}

}  // namespace

PowerOptions environmentPowerOptions() {
  PowerOptions options;
  if (const char* directory = std::getenv("KELVANE_POWER_SUPPLY"); directory && *directory)
    options.directory = directory;
  if (const char* upower = std::getenv("KELVANE_UPOWER");
      upower && std::string_view(upower) == "no")
    options.useUPower = false;
  return options;
}

int runResident(const PowerOptions& power) {
  const auto bus = connectToSessionBus();
  if (!bus) return 1;
  LinuxComputer computer(bus.get(), power);
  const SettingsKeys settings(computer.preferences);
  migrate(computer.preferences, settings);

  // The session's end is a request to end, too.
  g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
  g_signal_connect_swapped(bus.get(), "closed", G_CALLBACK(+[](gpointer loop) { quitLoop(loop); }),
                           &computer.runLoop);
  for (const int signal : {SIGTERM, SIGINT, SIGHUP})
    g_unix_signal_add(signal, quitLoop, &computer.runLoop);

  AppState app(computer.platform(), settings);
  // The item comes first.
  computer.runLoop.asyncAfter(kItemShown, [&] { computer.preferences.followOtherProcesses(); });
  // By then starting is over, and what it needed is free.
  computer.runLoop.asyncAfter(kSettled, [] { malloc_trim(0); });
  const int exitCode = computer.runLoop.run();
  g_signal_handlers_disconnect_by_data(bus.get(), &computer.runLoop);
  return exitCode;
}

}  // namespace kelvane
