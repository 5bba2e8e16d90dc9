#include "platform/linux/glib/private_bus_test.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <utility>

#include <signal.h>
#include <stdlib.h>
#include <sys/prctl.h>
#include <systemd/sd-bus.h>

namespace kelvane {

bool runUntil(const std::function<bool()>& done) {
  bool isLate = false;
  const guint deadline = g_timeout_add(
      5000, [](gpointer late) -> gboolean { return !(*static_cast<bool*>(late) = true); }, &isLate);
  while (!done() && !isLate) g_main_context_iteration(nullptr, TRUE);
  if (!isLate) g_source_remove(deadline);
  return done();
}

void runUntilIdle() {
  while (g_main_context_iteration(nullptr, FALSE)) {
  }
}

BusReply askBus(BusConnection* connection, const char* method, GVariant* arguments) {
  return connection->callAndWait(
      {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus"}, method, arguments,
      "r", 5000);
}

Arrivals::Arrivals(const BusPtr& connection, std::string path, std::string member)
    : connection_(connection), path_(std::move(path)), member_(std::move(member)) {
  sd_bus_slot* slot = nullptr;
  sd_bus_add_filter(
      connection->handle(), &slot,
      [](sd_bus_message* message, void* data, sd_bus_error*) {
        auto& self = *static_cast<Arrivals*>(data);
        const char* from = sd_bus_message_get_path(message);
        const char* what = sd_bus_message_get_member(message);
        if (from && what && std::string_view(from).ends_with(self.path_) &&
            (self.member_.empty() || self.member_ == what))
          ++self.count_;
        return 0;
      },
      this);
  filter_.reset(slot);
}

PrivateBus::PrivateBus(const std::string& activatable) {
  std::string pattern = (std::filesystem::temp_directory_path() / "bus-XXXXXX").string();
  folder_ = mkdtemp(pattern.data());
  const std::string configuration = folder_ + "/bus.conf";
  std::ofstream(configuration)
      << "<busconfig><type>session</type><listen>unix:path=" << folder_ << "/socket</listen>"
      << (activatable.empty() ? "" : "<servicedir>" + activatable + "</servicedir>")
      << "<policy context='default'><allow send_destination='*' eavesdrop='true'/>"
      << "<allow eavesdrop='true'/><allow own='*'/></policy>"
      << "</busconfig>";
  constexpr auto kPipes = static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_PIPE |
                                                        G_SUBPROCESS_FLAGS_STDERR_SILENCE);
  const GObjectPtr<GSubprocessLauncher> launcher(g_subprocess_launcher_new(kPipes));
  // However the test ends, its bus ends with it.
  g_subprocess_launcher_set_child_setup(
      launcher.get(), [](gpointer) { prctl(PR_SET_PDEATHSIG, SIGKILL); }, nullptr, nullptr);
  GError* rawError = nullptr;
  daemon_.reset(g_subprocess_launcher_spawn(launcher.get(), &rawError, "dbus-daemon", "--nofork",
                                            "--print-address", "--config-file",
                                            configuration.c_str(), nullptr));
  const GErrorPtr error(rawError);
  if (!daemon_) throw std::runtime_error(std::string("no message bus: ") + error->message);
  const GObjectPtr<GDataInputStream> output(
      g_data_input_stream_new(g_subprocess_get_stdout_pipe(daemon_.get())));
  const GCharPtr line(g_data_input_stream_read_line(output.get(), nullptr, nullptr, nullptr));
  if (!line) throw std::runtime_error("the message bus did not start");
  address_ = line.get();
}

PrivateBus::~PrivateBus() {
  g_subprocess_force_exit(daemon_.get());
  g_subprocess_wait(daemon_.get(), nullptr, nullptr);
  std::filesystem::remove_all(folder_);
}

BusPtr PrivateBus::connect() const {
  BusPtr connection = BusConnection::open(address_);
  if (!connection || !connection->waitUntilReady())
    throw std::runtime_error("no connection to the message bus");
  return connection;
}

GObjectPtr<GDBusConnection> PrivateBus::connectStranger() const {
  constexpr auto kFlags =
      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  GObjectPtr<GDBusConnection> connection(
      g_dbus_connection_new_for_address_sync(address_.c_str(), kFlags, nullptr, nullptr, nullptr));
  if (!connection) throw std::runtime_error("no connection to the message bus");
  return connection;
}

}  // namespace kelvane
