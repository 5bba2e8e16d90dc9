#include "platform/linux/desktop/linux_workspace.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/wait.h>

#include "platform/linux/desktop/power_settings.h"
#include "platform/linux/glib/private_bus_test.h"

namespace kelvane {
namespace {

namespace fs = std::filesystem;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

TEST(PowerSettings, TheRunningDesktopsOwnComeFirst) {
  using Programs = std::vector<std::string>;
  const struct {
    const char* desktops;
    Programs installed;
    Programs command;
  } rows[] = {
      {"KDE",
       {"xfce4-power-manager-settings", "systemsettings", "kcmshell5"},
       {"systemsettings", "kcm_powerdevilprofilesconfig"}},
      {"KDE",
       {"xfce4-power-manager-settings", "kcmshell5"},
       {"kcmshell5", "powerdevilprofilesconfig"}},
      {"ubuntu:GNOME",
       {"mate-power-preferences", "gnome-control-center"},
       {"gnome-control-center", "power"}},
      {"Budgie:GNOME",
       {"gnome-control-center", "budgie-control-center"},
       {"budgie-control-center", "power"}},
      {"gnome",
       {"gnome-control-center", "xfce4-power-manager-settings"},
       {"gnome-control-center", "power"}},
      {"X-Cinnamon", {"cinnamon-settings", "gnome-control-center"}, {"cinnamon-settings", "power"}},
      {"MATE",
       {"gnome-control-center", "lxqt-config-powermanagement"},
       {"lxqt-config-powermanagement"}},
      {"sway", {"gnome-control-center", "mate-power-preferences"}, {"mate-power-preferences"}},
      {"", {"cosmic-settings"}, {"cosmic-settings", "power"}},
      {"GNOME", {}, {}},
  };
  for (const auto& row : rows)
    EXPECT_EQ(powerSettingsCommand({desktopNames(row.desktops),
                                    [&](const std::string& program) {
                                      return std::ranges::count(row.installed, program) > 0;
                                    }}),
              row.command)
        << row.desktops;
}

// A portal that answers every request in one way.
class FakePortal {
 public:
  // `response` is told after the handle; without one the call itself fails.
  FakePortal(const PrivateBus& bus, std::optional<guint32> response)
      : connection_(bus.connectStranger()), response_(response) {
    const GDBusNodeInfoPtr node(g_dbus_node_info_new_for_xml(
        "<node><interface name='org.freedesktop.portal.OpenURI'><method name='OpenURI'>"
        "<arg name='parent' type='s' direction='in'/><arg name='uri' type='s' direction='in'/>"
        "<arg name='options' type='a{sv}' direction='in'/>"
        "<arg name='handle' type='o' direction='out'/></method></interface></node>",
        nullptr));
    static const GDBusInterfaceVTable kTable{&FakePortal::called, nullptr, nullptr, {}};
    g_dbus_connection_register_object(connection_.get(), "/org/freedesktop/portal/desktop",
                                      node->interfaces[0], &kTable, this, nullptr, nullptr);
    const GVariantPtr owned(g_dbus_connection_call_sync(
        connection_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "RequestName", g_variant_new("(su)", "org.freedesktop.portal.Desktop", 0u), nullptr,
        G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
  }
  ~FakePortal() { g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr); }

  static void askBus(GDBusConnection* connection) {
    const GVariantPtr answer(g_dbus_connection_call_sync(
        connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "GetId", nullptr, nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
  }
  void askBus() const { askBus(connection_.get()); }

  std::vector<std::string> asked;

 private:
  static void called(GDBusConnection* connection, const gchar* sender, const gchar*, const gchar*,
                     const gchar*, GVariant* arguments, GDBusMethodInvocation* call,
                     gpointer data) {
    auto& self = *static_cast<FakePortal*>(data);
    const gchar* url = nullptr;
    GVariant* rawOptions = nullptr;
    g_variant_get(arguments, "(&s&s@a{sv})", nullptr, &url, &rawOptions);
    const GVariantPtr options(rawOptions);
    self.asked.emplace_back(url);
    if (!self.response_)
      return g_dbus_method_invocation_return_error_literal(call, G_DBUS_ERROR, G_DBUS_ERROR_FAILED,
                                                           "No");
    const gchar* token = "";
    g_variant_lookup(options.get(), "handle_token", "&s", &token);
    std::string name = sender + 1;
    std::ranges::replace(name, '.', '_');
    const std::string handle = "/org/freedesktop/portal/desktop/request/" + name + "/" + token;
    // The response may overtake the reply.
    const bool isEarly = *self.response_ == 0;
    if (!isEarly) g_dbus_method_invocation_return_value(call, g_variant_new("(o)", handle.c_str()));
    g_dbus_connection_emit_signal(
        connection, nullptr, handle.c_str(), "org.freedesktop.portal.Request", "Response",
        g_variant_new_parsed("(%u, @a{sv} {})", *self.response_), nullptr);
    if (isEarly) g_dbus_method_invocation_return_value(call, g_variant_new("(o)", handle.c_str()));
  }

  GObjectPtr<GDBusConnection> connection_;
  std::optional<guint32> response_;
};

// Programs of our own that note how they were started.
class WorkspaceTest : public ::testing::Test {
 protected:
  WorkspaceTest() {
    std::string name = (fs::temp_directory_path() / "kelvane-workspace-XXXXXX").string();
    folder = mkdtemp(name.data());
    setenv("PATH", folder.c_str(), 1);
    setenv("KELVANE_TEST_LOG", (folder / "log").c_str(), 1);
  }
  ~WorkspaceTest() override {
    workspace.reset();
    runUntilIdle();
    fs::remove_all(folder);
    setenv("PATH", path.c_str(), 1);
  }

  void install(const std::string& program) const {
    std::ofstream(folder / program) << "#!/bin/sh\n"
                                       "read -r _ _ _ _ _ session _ </proc/$$/stat\n"
                                       "[ $session = $$ ] && own=' in its own session'\n"
                                       "echo \"${0##*/} $*$own\" >>\"$KELVANE_TEST_LOG\"\n";
    fs::permissions(folder / program, fs::perms(0755));
  }
  // The next thing that was started.
  std::string started() {
    // The loop hears nothing of the file.
    const guint ticking = g_timeout_add(
        5, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr);
    std::string line;
    const bool isThere = runUntil([&] {
      std::ifstream log(folder / "log");
      for (std::size_t i = 0; i <= seen; ++i)
        if (!std::getline(log, line)) return false;
      return !log.eof();
    });
    g_source_remove(ticking);
    ++seen;
    return isThere ? line : "nothing";
  }

  const std::string path = std::getenv("PATH");
  fs::path folder;
  std::size_t seen = 0;
  const PrivateBus bus;
  BusPtr connection = bus.connect();
  std::unique_ptr<LinuxWorkspace> workspace = std::make_unique<LinuxWorkspace>(connection.get());
};

TEST_F(WorkspaceTest, OpensPagesByThePortalOrElseByAProgram) {
  install("xdg-open");
  const auto byProgram = [](const std::string& url) {
    return "xdg-open " + url + " in its own session";
  };
  std::string url = "https://kelvane.example/?a=b c&d='e'";
  workspace->openUrl(url);
  EXPECT_EQ(started(), byProgram(url)) << "without a portal";

  const std::pair<std::optional<guint32>, bool> rows[] = {
      {0, false}, {1, false}, {2, true}, {std::nullopt, true}};
  for (const auto& [response, isByProgram] : rows) {
    FakePortal portal(bus, response);
    url += "+";
    workspace->openUrl(url);
    EXPECT_TRUE(runUntil([&] { return !portal.asked.empty(); }));
    EXPECT_THAT(portal.asked, ElementsAre(url));
    // What the portal sent is here after a question to the bus from either end.
    portal.askBus();
    kelvane::askBus(connection.get(), "GetId");
    runUntilIdle();
    if (isByProgram) {
      EXPECT_EQ(started(), byProgram(url));
    }
  }
  // What the portal opened was not opened again.
  workspace->openUrl("file:///etc/motd");
  EXPECT_EQ(started(), byProgram("file:///etc/motd"));
}

TEST_F(WorkspaceTest, OpensFilesAndPowerSettings) {
  install("xdg-open");
  install("xfce4-power-manager-settings");
  setenv("XDG_CURRENT_DESKTOP", "XFCE", 1);
  workspace->openFile("/tmp/a b");
  EXPECT_EQ(started(), "xdg-open /tmp/a b in its own session");
  workspace->openFile("--help");
  EXPECT_EQ(started(),
            "xdg-open " + (fs::current_path() / "--help").string() + " in its own session");
  workspace->openBatterySettings();
  EXPECT_EQ(started(), "xfce4-power-manager-settings  in its own session");

  siginfo_t ended{};
  EXPECT_EQ(waitid(P_ALL, 0, &ended, WEXITED | WNOHANG | WNOWAIT), 0);
  EXPECT_EQ(ended.si_pid, 0) << "a child that nobody waits for";
}

TEST_F(WorkspaceTest, SaysInOneLineWhatItCannotDo) {
  const std::pair<std::function<void()>, std::string> rows[] = {
      {[&] { workspace->openUrl("--version"); }, "no address of a page: --version"},
      {[&] { workspace->openUrl("javascript:alert(1)"); }, "no address of a page"},
      {[&] { workspace->openUrl(""); }, "no address of a page"},
      {[&] { workspace->openFile("/etc/motd"); }, "can't start xdg-open: "},
      {[&] { workspace->openBatterySettings(); }, "kelvane: no power settings were found\n"},
  };
  for (const auto& [act, complaint] : rows) {
    testing::internal::CaptureStderr();
    act();
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_THAT(said, HasSubstr(complaint));
    EXPECT_EQ(std::ranges::count(said, '\n'), 1) << said;
  }
}

}  // namespace
}  // namespace kelvane
