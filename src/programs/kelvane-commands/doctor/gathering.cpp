#include "programs/kelvane-commands/doctor/gathering.h"

#include <filesystem>
#include <string_view>
#include <system_error>

#include "platform/linux/application/application_service.h"
#include "platform/linux/desktop/desktop_session.h"
#include "platform/linux/desktop/linux_login_items.h"
#include "platform/linux/desktop/tray_remedy.h"
#include "platform/linux/files/safe_files.h"
#include "platform/linux/preferences/plist_preferences.h"

namespace kelvane {
namespace {

constexpr std::size_t kMostEntryBytes = 64 * 1024;

std::string sessionBusAddress() {
  const std::string whole = busAddress(BusKind::session);
  return whole.substr(0, whole.find(",guid="));
}

}  // namespace

LoginFacts gatherLogin(const std::string& applicationIdentifier) {
  LoginFacts facts;
  const auto path = userAutostartFolder() / (applicationIdentifier + "-AutoStartHelper.desktop");
  facts.path = path.string();
  std::error_code error;
  const auto text = readFile(path, kMostEntryBytes, error);
  if (text) {
    const DesktopSession session = currentDesktopSession();
    facts.entry = readAutostartEntry(*text, session);
    facts.hasProgram = session.hasProgram(facts.entry->program);
  } else if (error != std::errc::no_such_file_or_directory && error != std::errc::not_a_directory) {
    facts.problem = error.message();
  }
  return facts;
}

PreferencesFacts gatherPreferences() {
  const PlistFile file(PlistPreferences::standardPath());
  PreferencesFacts facts;
  facts.path = file.path().string();
  std::error_code error;
  const auto status = std::filesystem::status(file.path(), error);
  if (std::filesystem::exists(status)) facts.mode = static_cast<unsigned>(status.permissions());
  const auto contents = file.read();
  facts.problem = contents.problem;
  facts.values = valuesOf(contents.dictionary.get());
  return facts;
}

DoctorFacts gatherFacts(const PowerOptions& power) {
  DoctorFacts facts;
  facts.desktops = currentDesktopSession().desktops;
  facts.distributions = currentDistributionNames();
  BusProbe sessionBus(BusKind::session);
  facts.sessionBusProblem = sessionBus.problem();
  if (facts.sessionBusProblem.empty()) {
    facts.sessionBus = sessionBusAddress();
    gatherTray(sessionBus, facts);
    facts.notifier = gatherNotifier(sessionBus);
    facts.portal = sessionBus.presence("org.freedesktop.portal.Desktop");
  }
  facts.power = gatherPower(power);
  facts.login = gatherLogin(ApplicationService::kName);
  facts.preferences = gatherPreferences();
  return facts;
}

}  // namespace kelvane
