#include "programs/kelvane/resident.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include <glib-unix.h>
#include <glib.h>
#include <malloc.h>

#include "app/app_main.h"
#include "platform/linux/application/application_service.h"
#include "platform/linux/application/running_application.h"
#include "platform/linux/desktop/tray_remedy.h"
#include "platform/linux/glib/bus_connection.h"
#include "programs/kelvane/intent_service.h"
#include "programs/kelvane/linux_computer.h"
#include "programs/kelvane/missing_tray_notice.h"
#include "programs/kelvane/session_bus.h"
#include "programs/kelvane/version.h"

namespace kelvane {
namespace {

constexpr double kItemShown = 0.1;  // seconds from the start
constexpr double kSettled = 5.0;
// The one that runs may end just when it is asked to open again.
constexpr int kMostClaims = 3;

gboolean quitLoop(gpointer loop) {
  static_cast<GlibRunLoop*>(loop)->terminate(0);
  return G_SOURCE_CONTINUE;
}

// Absent: go on, this is the one. Otherwise the exit code.
std::optional<int> handOver(BusConnection* bus, ApplicationService& service) {
  for (int attempt = 0; attempt < kMostClaims; ++attempt) {
    switch (service.claim()) {
      case ApplicationService::Claim::granted:
        return std::nullopt;
      case ApplicationService::Claim::failed:
        return 1;
      case ApplicationService::Claim::taken:
        break;
    }
    switch (activateRunning(bus)) {
      case RunningAnswer::done:
        return 0;
      case RunningAnswer::notRunning:
        continue;
      case RunningAnswer::failed:
        break;
    }
    break;
  }
  std::fprintf(stderr, "kelvane: it is running already, but does not answer\n");
  return 1;
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

int runResident(const PowerOptions& power, Start start) {
  const auto bus = connectToSessionBus();
  if (!bus) return 1;

  // From here on every request to end is a clean end; the end of the session is one, too.
  GlibRunLoop runLoop;
  const BusObservation stateChanges = bus->observe([&] {
    if (bus->state() == BusConnection::State::closed) quitLoop(&runLoop);
  });
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) g_unix_signal_add(signal, quitLoop, &runLoop);

  // Calls may come before the application is there, and are then without effect. The name is given
  // back last: whoever waits for that finds the settings written.
  AppMain* application = nullptr;
  ApplicationService service(
      bus.get(), {.activate =
                      [&] {
                        if (application)
                          application->appDelegate().applicationShouldHandleReopen(false);
                      },
                  .chooseAction =
                      [&](const std::string& action) {
                        if (action == ApplicationService::kQuit) runLoop.terminate(0);
                        if (action == ApplicationService::kPreferences && application)
                          application->appState().showPreferencesWindow();
                      }});
  const IntentService intentService(
      bus.get(),
      [&](const GetBatteryDetailsIntent& intent)
          -> std::unique_ptr<GetBatteryDetailsIntentHandling> {
        return application ? application->appDelegate().handlerForIntent(intent) : nullptr;
      });
  if (const auto exitCode = handOver(bus.get(), service)) return *exitCode;

  LinuxComputer computer(runLoop, bus.get(), power);
  AppMain appMain(computer.platform(), builtInformation());
  application = &appMain;
  // What was migrated is safe on the disk before anything goes on; counting the launch can wait, as
  // the item comes first.
  computer.preferences.synchronize();
  computer.preferences.holdWrites();
  appMain.appState();
  std::optional<MissingTrayNotice> missingTray;
  if (start == Start::atLogin)
    missingTray.emplace(runLoop, bus.get(), computer.noticeBoard,
                        MissingTrayNotice::Questions{
                            [&] { return computer.statusBar.isItemWanted(); }, trayRemedyHere});
  runLoop.asyncAfter(kItemShown, [&] { computer.preferences.followOtherProcesses(); });
  // By then starting is over, and what it needed is free.
  runLoop.asyncAfter(kSettled, [] { malloc_trim(0); });
  return runLoop.run();
}

}  // namespace kelvane
