// What our adaptors do on a D-Bus connection: call, listen, watch a name, own a name. Main thread;
// a handle that is destroyed ends what it stands for, and its callback is not called any more.
#pragma once

#include <functional>
#include <list>
#include <memory>
#include <optional>
#include <string>

#include <glib.h>

#include "platform/linux/glib/bus_connection.h"
#include "platform/linux/glib/glib_ptr.h"

namespace kelvane {

// Calls that can be dropped together: destroying it cancels all that are under way.
class BusCalls {
 public:
  using Done = std::function<void(BusReply)>;

  BusCalls();
  ~BusCalls();
  BusCalls(const BusCalls&) = delete;
  BusCalls& operator=(const BusCalls&) = delete;

  using Target = BusTarget;
  // Calls a method; a reply of another type than `replyType` (a tuple, e.g. "(v)") is an error. The
  // service is not started for it unless `mayStart` says so. `arguments` may be floating or null.
  void call(BusConnection* connection, const Target& target, const char* method,
            GVariant* arguments, const char* replyType, Done done, bool mayStart = false,
            int timeoutMilliseconds = 5000);

  // org.freedesktop.DBus.Properties: the answer's value is the property itself, unpacked.
  void getProperty(BusConnection* connection, const Target& target, const char* property,
                   Done done);
  // The answer's value is an a{sv}.
  void getAllProperties(BusConnection* connection, const Target& target, Done done);

 private:
  struct Pending;
  std::unique_ptr<Pending> take(const Pending* pending);
  void fail(Pending& pending, std::string error);

  std::list<std::unique_ptr<Pending>> pending_;
};

// A signal that is listened to. Empty strings match everything.
class SignalSubscription {
 public:
  struct Match {
    std::string sender;
    std::string interface;
    std::string member;
    std::string path;
    std::string firstArgument;
  };
  // Path, member and parameters of a signal; the parameters' type is the sender's word, unchecked.
  using Handler = std::function<void(const char* path, const char* member, GVariant* parameters)>;
  // Reads the message by itself, for what is heard often.
  using Reader = std::function<void(sd_bus_message*)>;

  // A sender that is a name stands for its owner at the time.
  SignalSubscription(BusConnection* connection, const Match& match, Handler handler);
  SignalSubscription(BusConnection* connection, const Match& match, Reader reader);
  ~SignalSubscription();
  SignalSubscription(const SignalSubscription&) = delete;
  SignalSubscription& operator=(const SignalSubscription&) = delete;

 private:
  struct Listener;
  std::shared_ptr<Listener> listener_;
  BusPtr connection_;
  BusSlotPtr slot_;
};

// A bus name whose owner is followed. Called first with the owner at the time ("" for none), then
// for every change, a direct hand-over included.
class NameWatch {
 public:
  using Handler = std::function<void(const std::string& owner)>;
  NameWatch(BusConnection* connection, std::string name, Handler handler);
  ~NameWatch();
  NameWatch(const NameWatch&) = delete;
  NameWatch& operator=(const NameWatch&) = delete;

 private:
  std::unique_ptr<BusCalls> calls_;
  std::unique_ptr<SignalSubscription> changes_;
  std::shared_ptr<std::optional<std::string>> owner_;
  Handler handler_;
};

}  // namespace kelvane
