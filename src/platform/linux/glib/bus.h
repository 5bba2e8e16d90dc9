// What our adaptors do on a D-Bus connection: call, listen, watch a name, own a name. Main thread;
// a handle that is destroyed ends what it stands for, and its callback is not called any more.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <gio/gio.h>

#include "platform/linux/glib/glib_ptr.h"

namespace kelvane {

// The answer of a call: the reply's tuple, or the error's message. `value` is null on error.
struct BusReply {
  GVariantPtr value;
  std::string error;
  bool isRefused = false;  // the error is that there is no such object, interface or method
  explicit operator bool() const { return value != nullptr; }
};

// Calls that can be dropped together: destroying it cancels all that are under way.
class BusCalls {
 public:
  using Done = std::function<void(BusReply)>;

  BusCalls();
  ~BusCalls();
  BusCalls(const BusCalls&) = delete;
  BusCalls& operator=(const BusCalls&) = delete;

  struct Target {
    std::string destination;
    std::string path;
    std::string interface;
  };
  // Calls a method; a reply of another type than `replyType` (a tuple, e.g. "(v)") is an error. The
  // service is not started for it unless `mayStart` says so. `arguments` may be floating or null.
  void call(GDBusConnection* connection, const Target& target, const char* method,
            GVariant* arguments, const char* replyType, Done done, bool mayStart = false,
            int timeoutMilliseconds = 5000);

  // org.freedesktop.DBus.Properties: the answer's value is the property itself, unpacked.
  void getProperty(GDBusConnection* connection, const Target& target, const char* property,
                   Done done);
  // The answer's value is an a{sv}.
  void getAllProperties(GDBusConnection* connection, const Target& target, Done done);

  GCancellable* cancellable() const { return cancellable_.get(); }

 private:
  GObjectPtr<GCancellable> cancellable_;
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

  SignalSubscription(GDBusConnection* connection, const Match& match, Handler handler);
  ~SignalSubscription();
  SignalSubscription(const SignalSubscription&) = delete;
  SignalSubscription& operator=(const SignalSubscription&) = delete;

 private:
  GObjectPtr<GDBusConnection> connection_;
  guint id_;
};

// A bus name whose owner is followed. Called first with the owner at the time ("" for none), then
// for every change, a direct hand-over included.
class NameWatch {
 public:
  using Handler = std::function<void(const std::string& owner)>;
  NameWatch(GDBusConnection* connection, std::string name, Handler handler);
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
