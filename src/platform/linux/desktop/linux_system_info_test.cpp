#include "platform/linux/desktop/linux_system_info.h"

#include <filesystem>
#include <fstream>
#include <string>

#include <gio/gio.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include "platform/linux/glib/glib_ptr.h"
#include "platform/linux/glib/private_bus_test.h"

namespace kelvane {
namespace {

using namespace std::string_literals;

TEST(LinuxSystemInfo, OsRelease) {
  const struct {
    const char* text;
    std::optional<std::string> value;
  } rows[] = {
      {"NAME=x\nPRETTY_NAME=\"Debian GNU/Linux 12 (bookworm)\"\n",
       "Debian GNU/Linux 12 (bookworm)"},
      {"PRETTY_NAME='Arch \\Linux' # x", "Arch \\Linux"},
      {"  PRETTY_NAME=Void\r\n", "Void"},
      {"PRETTY_NAME=first\nPRETTY_NAME=second", "first"},
      {"PRETTY_NAME=\"a \\\"b\\\" \\$c\"", "a \"b\" $c"},
      {"PRETTY_NAME=\"unfinished", "unfinished"},
      {"PRETTY_NAME=\"\"\n", std::nullopt},
      {"PRETTY_NAME=", std::nullopt},
      {"PRETTY_NAMES=x\n#PRETTY_NAME=y", std::nullopt},
      {"", std::nullopt},
  };
  for (const auto& row : rows)
    EXPECT_EQ(osReleaseValue(row.text, "PRETTY_NAME"), row.value) << row.text;
}

TEST(LinuxSystemInfo, LocaleOfTheEnvironment) {
  const struct {
    const char *all, *messages, *lang, *locale, *language;
  } rows[] = {
      {"", "", "de_DE.UTF-8", "de_DE", "German"},
      {"", "fr_CH@euro", "de_DE", "fr_CH", "French"},
      {"pt_BR", "fr_FR", "de_DE", "pt_BR", "Portuguese"},
      {"C.UTF-8", "", "de_DE", "en_US", "English"},
      {"POSIX", "", "", "en_US", "English"},
      {"", "", "", "en_US", "English"},
      {"", "", "../../x", "en_US", "English"},
      {"", "", "tlh", "tlh", "tlh"},
  };
  LinuxSystemInfo info;
  for (const auto& row : rows) {
    setenv("LC_ALL", row.all, 1);
    setenv("LC_MESSAGES", row.messages, 1);
    setenv("LANG", row.lang, 1);
    EXPECT_EQ(info.localeIdentifier(), row.locale);
    EXPECT_EQ(info.languageNameInEnglish(), row.language);
  }
}

TEST(LinuxSystemInfo, ReadsWhatTheKernelKnows) {
  std::string pattern = (std::filesystem::temp_directory_path() / "root-XXXXXX").string();
  const std::filesystem::path root = mkdtemp(pattern.data());
  const auto write = [&](const std::string& path, const std::string& text) {
    std::filesystem::create_directories((root / path).parent_path());
    std::ofstream(root / path, std::ios::binary) << text;
  };
  LinuxSystemInfo info(root.string());
  EXPECT_EQ(info.systemDescription(), "Linux");
  EXPECT_EQ(info.hardwareModel(), std::nullopt);
  EXPECT_EQ(info.memoryFootprint(), std::nullopt);
  EXPECT_EQ(info.screenCount(), 0);

  write("usr/lib/os-release", "NAME=Alpine\n");
  EXPECT_EQ(info.systemDescription(), "Alpine");
  write("etc/os-release", "PRETTY_NAME=\"Alpine 3\"\n");
  EXPECT_EQ(info.systemDescription(), "Alpine 3");
  write("proc/device-tree/model", "Pine64 Pinebook\0"s);
  EXPECT_EQ(info.hardwareModel(), "Pine64 Pinebook");
  write("sys/class/dmi/id/product_name", "20XW\n");
  EXPECT_EQ(info.hardwareModel(), "20XW");
  write("proc/self/statm", "500 20 10 1 0 5 0\n");
  EXPECT_EQ(info.memoryFootprint(), 20u * static_cast<unsigned>(sysconf(_SC_PAGESIZE)));
  write("proc/self/smaps_rollup",
        "0-f ---p 0 0 [rollup]\nRss: 9 kB\nPss:     1855 kB\nPss_Dirty: 7 kB\n");
  EXPECT_EQ(info.memoryFootprint(), 1855u * 1024);
  write("sys/class/drm/card0-eDP-1/status", "connected\n");
  write("sys/class/drm/card0-DP-1/status", "disconnected\n");
  write("sys/class/drm/version", "drm 1.1.0\n");
  EXPECT_EQ(info.screenCount(), 1);
  std::filesystem::remove_all(root);
  EXPECT_GT(LinuxSystemInfo().memoryFootprint().value_or(0), 100'000u);  // of this very process
}

// A power-profiles service under either of its names.
class FakeProfiles {
 public:
  FakeProfiles(const PrivateBus& bus, const std::string& name, std::string path,
               const char* profile)
      : path_(std::move(path)), name_(name), connection_(bus.connectStranger()), profile_(profile) {
    interface_.reset(g_dbus_node_info_new_for_xml(
        ("<node><interface name='" + name +
         "'><property name='ActiveProfile' type='s' access='read'/></interface></node>")
            .c_str(),
        nullptr));
    static const GDBusInterfaceVTable kTable{
        nullptr,
        [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*, GError**,
           gpointer self) {
          return g_variant_new_string(static_cast<FakeProfiles*>(self)->profile_.c_str());
        },
        nullptr,
        {}};
    g_dbus_connection_register_object(connection_.get(), path_.c_str(), interface_->interfaces[0],
                                      &kTable, this, nullptr, nullptr);
    const GVariantPtr owned(g_dbus_connection_call_sync(
        connection_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
        "RequestName", g_variant_new("(su)", name.c_str(), 0u), nullptr, G_DBUS_CALL_FLAGS_NONE, -1,
        nullptr, nullptr));
  }
  ~FakeProfiles() { g_dbus_connection_close_sync(connection_.get(), nullptr, nullptr); }

  // `changed` is an a{sv} and `invalidated` an as, in GVariant's text format.
  void tell(const std::string& changed, const std::string& invalidated) {
    const GVariantPtr parameters(g_variant_parse(
        nullptr, ("('" + name_ + "', " + changed + ", " + invalidated + ")").c_str(), nullptr,
        nullptr, nullptr));
    g_dbus_connection_emit_signal(connection_.get(), nullptr, path_.c_str(),
                                  "org.freedesktop.DBus.Properties", "PropertiesChanged",
                                  parameters.get(), nullptr);
  }

 private:
  std::string path_, name_;
  GObjectPtr<GDBusConnection> connection_;
  GDBusNodeInfoPtr interface_;
  std::string profile_;
};

TEST(LinuxSystemInfo, LowPowerModeFollowsThePowerProfile) {
  const struct {
    const char *name, *path;
  } services[] = {{"org.freedesktop.UPower.PowerProfiles", "/org/freedesktop/UPower/PowerProfiles"},
                  {"net.hadess.PowerProfiles", "/net/hadess/PowerProfiles"}};
  // One bus for both: GLib gives out one connection to the system bus for as long as it lives.
  const PrivateBus bus;
  setenv("DBUS_SYSTEM_BUS_ADDRESS", bus.address().c_str(), 1);
  for (const auto& service : services) {
    auto profiles = std::make_unique<FakeProfiles>(bus, service.name, service.path, "power-saver");
    LinuxSystemInfo info;
    int changes = 0;
    info.setLowPowerModeObserver([&] { ++changes; });
    const auto becomes = [&](bool isEnabled) {
      return runUntil([&] { return info.isLowPowerModeEnabled() == isEnabled; });
    };
    EXPECT_FALSE(info.isLowPowerModeEnabled());
    EXPECT_TRUE(becomes(true)) << service.name;
    profiles->tell("{'ActiveProfile': <'balanced'>}", "@as []");
    EXPECT_TRUE(becomes(false));
    profiles->tell("@a{sv} {}", "['ActiveProfile']");
    EXPECT_TRUE(becomes(true));
    profiles->tell("{'ActiveProfile': <5>}", "@as []");
    EXPECT_TRUE(becomes(false));
    profiles->tell("{'ActiveProfile': <'power-saver'>}", "@as []");
    EXPECT_TRUE(becomes(true));
    profiles.reset();
    EXPECT_TRUE(becomes(false));
    EXPECT_EQ(changes, 6);
  }
}

}  // namespace
}  // namespace kelvane
