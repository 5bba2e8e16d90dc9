// A connection to a message bus, on GLib's default main context: it has no thread of its own, and
// waits only where that is said. Main thread.
//
// Whoever is on the bus may send anything; what is read here has the form of a message, and no more
// is known of it.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <glib.h>

#include "platform/linux/glib/bus_writer.h"
#include "platform/linux/glib/glib_ptr.h"

struct sd_bus;
struct sd_bus_message;
struct sd_bus_slot;

namespace kelvane {

class BusConnection;
class ExportedObject;
using BusPtr = std::shared_ptr<BusConnection>;

// One owner's hold on a match, a call or a filter of the bus library.
struct BusSlotDeleter {
  void operator()(sd_bus_slot* slot) const;
};
using BusSlotPtr = std::unique_ptr<sd_bus_slot, BusSlotDeleter>;

enum class BusKind { session, system };

// Where the bus is by the environment or by custom; empty when there is no such place.
std::string busAddress(BusKind kind);

// The answer of a call: the reply's tuple, or an error's name and message. `value` is null on
// error.
struct BusReply {
  GVariantPtr value;
  std::string error;      // for people
  std::string errorName;  // "org.freedesktop.DBus.Error.ServiceUnknown"; empty without an answer
  explicit operator bool() const { return value != nullptr; }
  // The error is that there is no such object, interface or method.
  bool isRefused() const;
};

struct BusTarget {
  std::string destination;
  std::string path;
  std::string interface;
};

// Drops what was observed when it is destroyed.
using BusObservation = std::shared_ptr<const std::function<void()>>;

class BusConnection : public std::enable_shared_from_this<BusConnection> {
 public:
  enum class State { opening, ready, closed };

  // Returns at once, and the connection opens in the main loop; meanwhile whatever is sent waits.
  // Null when nobody listens there, which `problem` then explains.
  static BusPtr open(const std::string& address, std::string* problem = nullptr);
  // The connection that the process shares, on the same terms; kept by those who use it.
  static BusPtr share(BusKind kind, std::string* problem = nullptr);

  ~BusConnection();
  BusConnection(const BusConnection&) = delete;
  BusConnection& operator=(const BusConnection&) = delete;

  State state() const { return state_; }
  // Waits until it is ready, which takes as long as the bus does; false when it has closed instead.
  bool waitUntilReady();
  // `changed` is called after each change of the state, in the main loop.
  [[nodiscard]] BusObservation observe(std::function<void()> changed);

  // ":1.7"; empty until it is ready.
  const std::string& uniqueName() const { return uniqueName_; }

  // Calls and waits for the answer; see `BusCalls::call`.
  BusReply callAndWait(const BusTarget& target, const char* method, GVariant* arguments,
                       const char* replyType, int timeoutMilliseconds, bool mayStart = false);
  // Tells everyone who listens. `parameters` is a tuple, may be floating, or null for none; `write`
  // may be empty.
  void emit(const char* path, const char* interface, const char* signal,
            GVariant* parameters = nullptr);
  void emit(const char* path, const char* interface, const char* signal, const BusWrite& write);

  // Hangs up; the state follows in the main loop, and calls under way fail.
  void close();

  sd_bus* handle() const { return bus_; }

 private:
  friend class ExportedObject;
  struct Source;

  explicit BusConnection(sd_bus* bus);
  static gboolean prepare(GSource* source, gint* milliseconds);
  static gboolean check(GSource* source);
  static gboolean dispatch(GSource* source, GSourceFunc, gpointer);
  void process();
  void setState(State state);
  void forgetSource();

  sd_bus* bus_;
  Source* source_ = nullptr;
  State state_ = State::opening;
  bool isProcessing_ = false;
  std::string uniqueName_;
  std::vector<std::weak_ptr<const std::function<void()>>> observers_;
  BusSlotPtr calls_;
  // What is exported, by path.
  std::map<std::string, std::vector<ExportedObject*>, std::less<>> objects_;
};

inline BusPtr shareBus(BusConnection* bus) { return bus->shared_from_this(); }

}  // namespace kelvane
