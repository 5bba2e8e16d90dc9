#include "platform/linux/glib/bus_connection.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <sys/socket.h>
#include <systemd/sd-bus.h>

#include "platform/linux/glib/bus_message.h"
#include "platform/linux/glib/exported_object.h"
#include "platform/linux/glib/glib_run_loop.h"

namespace kelvane {
namespace {

// The rest waits for the next turn, so that a flood does not keep the others from theirs.
constexpr int kMostInATurn = 16;

std::string textOf(int error) { return std::strerror(error < 0 ? -error : error); }

}  // namespace

bool BusReply::isRefused() const {
  // InvalidArgs is what GLib's services say of an interface they don't know.
  for (const char* name : {"UnknownMethod", "UnknownObject", "UnknownInterface", "InvalidArgs"})
    if (errorName == std::string("org.freedesktop.DBus.Error.") + name) return true;
  return false;
}

void BusSlotDeleter::operator()(sd_bus_slot* slot) const { sd_bus_slot_unref(slot); }

std::string busAddress(BusKind kind) {
  const char* named =
      std::getenv(kind == BusKind::system ? "DBUS_SYSTEM_BUS_ADDRESS" : "DBUS_SESSION_BUS_ADDRESS");
  if (named && *named) return named;
  if (kind == BusKind::system) return "unix:path=/var/run/dbus/system_bus_socket";
  const std::string path = std::string(g_get_user_runtime_dir()) + "/bus";
  if (!g_file_test(path.c_str(), G_FILE_TEST_EXISTS)) return "";
  const GCharPtr escaped(g_uri_escape_string(path.c_str(), "/", FALSE));
  return std::string("unix:path=") + escaped.get();
}

struct BusConnection::Source {
  GSource source;
  BusConnection* connection;
  GPollFD poll;
};

gboolean BusConnection::prepare(GSource* source, gint* milliseconds) {
  auto& self = *reinterpret_cast<Source*>(source);
  sd_bus* bus = self.connection->bus_;
  *milliseconds = -1;
  // A loop inside what a message has called; sd-bus takes no other message then.
  self.poll.events = 0;
  if (self.connection->isProcessing_) return FALSE;
  const int descriptor = sd_bus_get_fd(bus);
  const int events = sd_bus_get_events(bus);
  if (descriptor < 0 || events < 0) return TRUE;  // it has closed, which is still to be told
  self.poll.events = static_cast<gushort>(events);
  std::uint64_t deadline = 0;
  if (sd_bus_get_timeout(bus, &deadline) < 0 || deadline == UINT64_MAX) return FALSE;
  const auto now = static_cast<std::uint64_t>(g_get_monotonic_time());
  if (deadline <= now) return TRUE;
  *milliseconds = static_cast<gint>(std::min<std::uint64_t>((deadline - now + 999) / 1000, 60'000));
  return FALSE;
}

gboolean BusConnection::check(GSource* source) {
  const auto& self = *reinterpret_cast<Source*>(source);
  if (self.connection->isProcessing_) return FALSE;
  if (self.poll.revents != 0) return TRUE;
  std::uint64_t deadline = 0;
  return sd_bus_get_timeout(self.connection->bus_, &deadline) >= 0 &&
         deadline <= static_cast<std::uint64_t>(g_get_monotonic_time());
}

gboolean BusConnection::dispatch(GSource* source, GSourceFunc, gpointer) {
  // What is called back may drop the connection.
  const BusPtr alive = reinterpret_cast<Source*>(source)->connection->weak_from_this().lock();
  if (!alive) return G_SOURCE_REMOVE;
  alive->process();
  return G_SOURCE_CONTINUE;
}

BusPtr BusConnection::open(const std::string& address, std::string* problem) {
  sd_bus* bus = nullptr;
  int result = address.empty() ? -ENOENT : sd_bus_new(&bus);
  if (result >= 0) result = sd_bus_set_address(bus, address.c_str());
  if (result >= 0) result = sd_bus_set_bus_client(bus, 1);
  if (result >= 0) result = sd_bus_start(bus);
  if (result >= 0) return BusPtr(new BusConnection(bus));
  sd_bus_close_unref(bus);
  if (problem) *problem = textOf(result);
  return nullptr;
}

BusPtr BusConnection::share(BusKind kind, std::string* problem) {
  static std::array<std::weak_ptr<BusConnection>, 2> shared;
  auto& kept = shared[kind == BusKind::system ? 1 : 0];
  BusPtr connection = kept.lock();
  if (connection && connection->state() != State::closed) return connection;
  connection = open(busAddress(kind), problem);
  kept = connection;
  return connection;
}

BusConnection::BusConnection(sd_bus* bus) : bus_(bus) {
  static GSourceFuncs functions = {prepare, check, dispatch, nullptr, nullptr, nullptr};
  source_ = reinterpret_cast<Source*>(g_source_new(&functions, sizeof(Source)));
  source_->connection = this;
  source_->poll = {sd_bus_get_fd(bus), G_IO_IN, 0};
  g_source_set_static_name(&source_->source, "kelvane bus");
  g_source_add_poll(&source_->source, &source_->poll);
  // Else GLib takes the descriptor out while it dispatches, and wakes itself up for that, twice.
  g_source_set_can_recurse(&source_->source, TRUE);
  GlibRunLoop::attach(&source_->source);
  sd_bus_slot* slot = nullptr;
  sd_bus_add_filter(
      bus, &slot,
      [](sd_bus_message* message, void* self, sd_bus_error*) {
        return ExportedObject::receive(*static_cast<BusConnection*>(self), message) ? 1 : 0;
      },
      this);
  calls_.reset(slot);
}

BusConnection::~BusConnection() {
  forgetSource();
  calls_.reset();
  sd_bus_close_unref(bus_);
}

void BusConnection::forgetSource() {
  if (!source_) return;
  g_source_destroy(&source_->source);
  g_source_unref(&source_->source);
  source_ = nullptr;
}

bool BusConnection::waitUntilReady() {
  const char* name = nullptr;
  if (state_ == State::opening && sd_bus_get_unique_name(bus_, &name) >= 0) {
    uniqueName_ = name;
    setState(State::ready);
  }
  return state_ == State::ready;
}

BusObservation BusConnection::observe(std::function<void()> changed) {
  auto observation = std::make_shared<const std::function<void()>>(std::move(changed));
  observers_.push_back(observation);
  return observation;
}

void BusConnection::process() {
  int result = 1;
  isProcessing_ = true;
  for (int i = 0; i < kMostInATurn && result > 0; ++i) result = sd_bus_process(bus_, nullptr);
  isProcessing_ = false;
  if (state_ == State::opening && sd_bus_is_ready(bus_) > 0) waitUntilReady();
  if (result < 0 || (result == 0 && sd_bus_is_open(bus_) <= 0)) setState(State::closed);
}

void BusConnection::setState(State state) {
  if (state_ == State::closed || state == state_) return;
  state_ = state;
  if (state == State::closed) {
    forgetSource();
    sd_bus_close(bus_);
  }
  std::erase_if(observers_, [](const auto& each) { return each.expired(); });
  for (const auto observers = observers_; const auto& each : observers)
    if (const auto changed = each.lock()) (*changed)();
}

BusReply BusConnection::callAndWait(const BusTarget& target, const char* method,
                                    GVariant* arguments, const char* replyType,
                                    int timeoutMilliseconds, bool mayStart) {
  const BusMessagePtr call = newCall(*this, target, method, arguments, mayStart);
  if (!call) return {nullptr, "the call can't be made", ""};
  sd_bus_error error{};
  sd_bus_message* answer = nullptr;
  const int result = sd_bus_call(
      bus_, call.get(), static_cast<std::uint64_t>(timeoutMilliseconds) * 1000, &error, &answer);
  const BusMessagePtr owned(answer);
  BusReply reply = result < 0 ? BusReply{nullptr, error.message ? error.message : textOf(result),
                                         error.name ? error.name : ""}
                              : replyOf(answer, replyType);
  sd_bus_error_free(&error);
  return reply;
}

void BusConnection::emit(const char* path, const char* interface, const char* signal,
                         GVariant* parameters) {
  const GVariantPtr owned(parameters ? g_variant_ref_sink(parameters) : nullptr);
  emit(path, interface, signal, [&](BusWriter& body) { body.parts(owned.get()); });
}

void BusConnection::emit(const char* path, const char* interface, const char* signal,
                         const BusWrite& write) {
  sd_bus_message* raw = nullptr;
  if (sd_bus_message_new_signal(bus_, &raw, path, interface, signal) < 0) return;
  const BusMessagePtr message(raw);
  BusWriter body(raw);
  if (write) write(body);
  if (body.isGood()) sd_bus_send(bus_, raw, nullptr);
}

void BusConnection::close() {
  if (state_ == State::closed) return;
  // Heard as the bus's own end, so that calls under way fail as they do then.
  shutdown(sd_bus_get_fd(bus_), SHUT_RDWR);
}

}  // namespace kelvane
