#include "platform/linux/desktop/linux_workspace.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <system_error>

#include "platform/linux/desktop/desktop_session.h"
#include "platform/linux/desktop/detached_program.h"
#include "platform/linux/desktop/power_settings.h"

namespace kelvane {
namespace {

constexpr const char* kPortal = "org.freedesktop.portal.Desktop";
constexpr const char* kPortalPath = "/org/freedesktop/portal/desktop";
// It may have to be started first.
constexpr int kPortalPatience = 10'000;  // milliseconds
// The answer that says "neither opened nor called off by the user".
constexpr guint32 kFailed = 2;

void openByProgram(const std::string& address) { startDetached({"xdg-open", address}); }

}  // namespace

LinuxWorkspace::LinuxWorkspace(BusConnection* sessionBus) : sessionBus_(sessionBus) {}

LinuxWorkspace::~LinuxWorkspace() = default;

void LinuxWorkspace::openUrl(const std::string& url) {
  // The portal takes no files by address.
  if (url.starts_with("file://")) return openByProgram(url);
  if (!url.starts_with("https://") && !url.starts_with("http://")) {
    std::fprintf(stderr, "kelvane: this is no address of a page: %s\n", url.c_str());
    return;
  }
  // The answer's path follows from our name on the bus, so that none can come too early.
  const std::string token = "kelvane" + std::to_string(++requests_);
  const std::string& uniqueName = sessionBus_->uniqueName();
  std::string sender = uniqueName.empty() ? "" : uniqueName.substr(1);
  std::ranges::replace(sender, '.', '_');
  response_ = std::make_unique<SignalSubscription>(
      sessionBus_,
      SignalSubscription::Match{
          .sender = kPortal,
          .interface = "org.freedesktop.portal.Request",
          .member = "Response",
          .path = std::string(kPortalPath) + "/request/" + sender + "/" + token},
      [this, url](const char*, const char*, GVariant* parameters) {
        guint32 answer = 0;
        if (g_variant_is_of_type(parameters, G_VARIANT_TYPE("(ua{sv})")))
          g_variant_get(parameters, "(u@a{sv})", &answer, nullptr);
        if (answer == kFailed) openByProgram(url);
        response_.reset();
      });
  GVariantBuilder options;
  g_variant_builder_init(&options, G_VARIANT_TYPE_VARDICT);
  g_variant_builder_add(&options, "{sv}", "handle_token", g_variant_new_string(token.c_str()));
  if (!calls_) calls_ = std::make_unique<BusCalls>();
  calls_->call(
      sessionBus_, {kPortal, kPortalPath, "org.freedesktop.portal.OpenURI"}, "OpenURI",
      g_variant_new("(ssa{sv})", "", url.c_str(), &options), "(o)",
      [this, url, request = requests_](const BusReply& reply) {
        if (reply) return;
        if (request == requests_) {
          if (!response_) return;  // the portal said how it went and left
          response_.reset();
        }
        openByProgram(url);
      },
      true, kPortalPatience);
}

void LinuxWorkspace::openFile(const std::string& path) {
  // An absolute path is never taken for an option.
  std::error_code error;
  const auto whole = std::filesystem::absolute(path, error);
  openByProgram(error ? path : whole.string());
}

void LinuxWorkspace::openBatterySettings() {
  const auto command = powerSettingsCommand(currentDesktopSession());
  if (command.empty()) {
    std::fputs("kelvane: no power settings were found\n", stderr);
  } else {
    startDetached(command);
  }
}

}  // namespace kelvane
