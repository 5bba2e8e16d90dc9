// An object of ours on a bus connection, from export to destruction. Main thread.
//
// A call's interface, method and argument types have been checked against the interface before the
// handler sees it; what the arguments say is the caller's word. Introspection and the reading of
// properties are answered here.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <glib.h>

#include "platform/linux/glib/bus_connection.h"
#include "platform/linux/glib/bus_interface.h"

namespace kelvane {

inline constexpr const char* kInvalidArguments = "org.freedesktop.DBus.Error.InvalidArgs";
inline constexpr const char* kFailed = "org.freedesktop.DBus.Error.Failed";

// A call that is to be answered once, now or later; copies stand for the same call.
class BusInvocation {
 public:
  explicit BusInvocation(sd_bus_message* call);
  // `value` is a tuple, may be floating, or null for an empty one. An answer that can't be written
  // is an error to the caller.
  void answer(GVariant* value = nullptr) const;
  void answer(const BusWrite& write) const;
  void refuse(const char* errorName, const std::string& message) const;

  sd_bus_message* call() const { return call_.get(); }

 private:
  std::shared_ptr<sd_bus_message> call_;
};

class ExportedObject {
 public:
  struct Call {
    std::string_view method;
    const char* sender;
    GVariant* arguments;
    BusInvocation invocation;
  };
  struct Handlers {
    std::function<void(const Call&)> call;
    // What writes a value of the property's type, called at once; empty for one that is not there.
    std::function<BusWrite(std::string_view property)> property;
  };

  // `interface` must outlive the object.
  ExportedObject(BusConnection* connection, std::string path, const BusInterface& interface,
                 Handlers handlers);
  ~ExportedObject();
  ExportedObject(const ExportedObject&) = delete;
  ExportedObject& operator=(const ExportedObject&) = delete;

  // Tells everyone who listens; see `BusConnection::emit`.
  void emit(const char* signal, GVariant* parameters = nullptr) const;
  void emit(const char* signal, const BusWrite& write) const;

  BusConnection* connection() const { return connection_.get(); }

 private:
  friend class BusConnection;
  // Whether the message was a call to an object of the connection.
  static bool receive(BusConnection& connection, sd_bus_message* message);
  static const ExportedObject* objectOf(const std::vector<ExportedObject*>& objects,
                                        std::string_view interface);
  static bool describe(const BusConnection& connection, sd_bus_message* message);
  static bool readProperties(const std::vector<ExportedObject*>& objects, sd_bus_message* message);
  bool receiveCall(sd_bus_message* message) const;
  void getProperty(const BusInvocation& invocation, std::string_view name) const;
  void getAllProperties(const BusInvocation& invocation) const;
  // Empty for a property that is not there.
  BusWrite valueOf(const BusInterface::Property& property) const;

  BusPtr connection_;
  std::string path_;
  const BusInterface& interface_;
  std::shared_ptr<Handlers> handlers_;
};

}  // namespace kelvane
