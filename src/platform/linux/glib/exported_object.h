// An object of ours on a bus connection, from export to destruction. Main thread.
//
// GDBus has checked a call's interface, method and argument types against the interface before the
// handler sees it; what the arguments say is the caller's word.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include <gio/gio.h>

#include "platform/linux/glib/glib_ptr.h"

namespace kelvane {

class ExportedObject {
 public:
  struct Call {
    std::string_view method;
    const char* sender;
    GVariant* arguments;
    // Takes the call over: it must be answered with a value or an error, once.
    GDBusMethodInvocation* invocation;
  };
  struct Handlers {
    std::function<void(const Call&)> call;
    // A new or floating reference; null for a property that is not there now.
    std::function<GVariant*(std::string_view property)> property;
  };

  // `interface` must outlive the object.
  ExportedObject(GDBusConnection* connection, std::string path, GDBusInterfaceInfo* interface,
                 Handlers handlers);
  ~ExportedObject();
  ExportedObject(const ExportedObject&) = delete;
  ExportedObject& operator=(const ExportedObject&) = delete;

  // Tells everyone who listens. `parameters` may be floating, or null for none.
  void emit(const char* signal, GVariant* parameters = nullptr) const;

  GDBusConnection* connection() const { return connection_.get(); }

 private:
  GObjectPtr<GDBusConnection> connection_;
  std::string path_;
  GDBusInterfaceInfo* interface_;
  Handlers handlers_;
  guint id_ = 0;
};

// The interface that introspection XML describes. The text is ours: a fault in it aborts.
GDBusNodeInfoPtr parseInterface(const char* xml);

}  // namespace kelvane
