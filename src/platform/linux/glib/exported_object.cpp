#include "platform/linux/glib/exported_object.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace kelvane {
namespace {

void handleCall(GDBusConnection*, const gchar* sender, const gchar*, const gchar*,
                const gchar* method, GVariant* arguments, GDBusMethodInvocation* invocation,
                gpointer data) {
  const auto& handlers = *static_cast<ExportedObject::Handlers*>(data);
  handlers.call({method, sender ? sender : "", arguments, invocation});
}

GVariant* readProperty(GDBusConnection*, const gchar*, const gchar*, const gchar*,
                       const gchar* property, GError** error, gpointer data) {
  const auto& handlers = *static_cast<ExportedObject::Handlers*>(data);
  GVariant* value = handlers.property(property);
  if (!value)
    g_set_error(error, G_DBUS_ERROR, G_DBUS_ERROR_UNKNOWN_PROPERTY, "No property %s", property);
  return value;
}

constexpr GDBusInterfaceVTable kTable = {handleCall, readProperty, nullptr, {}};

}  // namespace

ExportedObject::ExportedObject(GDBusConnection* connection, std::string path,
                               GDBusInterfaceInfo* interface, Handlers handlers)
    : connection_(shareObject(connection)),
      path_(std::move(path)),
      interface_(interface),
      handlers_(std::move(handlers)) {
  // Fails only for a path that is taken, and the connection is ours alone.
  id_ = g_dbus_connection_register_object(connection, path_.c_str(), interface, &kTable, &handlers_,
                                          nullptr, nullptr);
}

ExportedObject::~ExportedObject() {
  if (id_ != 0) g_dbus_connection_unregister_object(connection_.get(), id_);
}

void ExportedObject::emit(const char* signal, GVariant* parameters) const {
  g_dbus_connection_emit_signal(connection_.get(), nullptr, path_.c_str(), interface_->name, signal,
                                parameters, nullptr);
}

GDBusNodeInfoPtr parseInterface(const char* xml) {
  GError* rawError = nullptr;
  GDBusNodeInfoPtr node(g_dbus_node_info_new_for_xml(xml, &rawError));
  const GErrorPtr error(rawError);
  if (!node) {
    std::fprintf(stderr, "kelvane: faulty interface description: %s\n", error->message);
    std::abort();
  }
  return node;
}

}  // namespace kelvane
