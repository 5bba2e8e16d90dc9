#include "platform/linux/application/application_service.h"

#include <cstdio>
#include <utility>

namespace kelvane {
namespace {

// What desktops call on an application whose desktop file says DBusActivatable.
constexpr const char* kInterface = R"xml(<node><interface name="org.freedesktop.Application">
  <method name="Activate"><arg name="platform_data" type="a{sv}" direction="in"/></method>
  <method name="Open">
    <arg name="uris" type="as" direction="in"/>
    <arg name="platform_data" type="a{sv}" direction="in"/>
  </method>
  <method name="ActivateAction">
    <arg name="action_name" type="s" direction="in"/>
    <arg name="parameter" type="av" direction="in"/>
    <arg name="platform_data" type="a{sv}" direction="in"/>
  </method>
</interface></node>)xml";

constexpr guint32 kDoNotQueue = 4;
constexpr guint32 kPrimaryOwner = 1;
constexpr guint32 kExists = 3;
constexpr int kBusTimeout = 5000;  // milliseconds

// A call to the bus itself; null on error, which `error` then says.
GVariantPtr callBus(GDBusConnection* bus, const char* method, GVariant* arguments,
                    GErrorPtr& error) {
  GError* rawError = nullptr;
  GVariantPtr reply(g_dbus_connection_call_sync(
      bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method,
      arguments, G_VARIANT_TYPE("(u)"), G_DBUS_CALL_FLAGS_NONE, kBusTimeout, nullptr, &rawError));
  error.reset(rawError);
  return reply;
}

}  // namespace

ApplicationService::ApplicationService(GDBusConnection* bus, Handlers handlers)
    : bus_(shareObject(bus)), handlers_(std::move(handlers)) {
  static const GDBusNodeInfoPtr node = parseInterface(kInterface);
  object_ = std::make_unique<ExportedObject>(
      bus, kPath, node->interfaces[0],
      ExportedObject::Handlers{[this](const ExportedObject::Call& call) { handle(call); },
                               [](std::string_view) -> GVariant* { return nullptr; }});
}

ApplicationService::~ApplicationService() {
  if (!hasName_) return;
  // The answer comes after all that was sent before, the reply to a request to end included.
  GErrorPtr error;
  callBus(bus_.get(), "ReleaseName", g_variant_new("(s)", kName), error);
}

ApplicationService::Claim ApplicationService::claim() {
  GErrorPtr error;
  const GVariantPtr reply =
      callBus(bus_.get(), "RequestName", g_variant_new("(su)", kName, kDoNotQueue), error);
  if (!reply) {
    std::fprintf(stderr, "kelvane: the session bus does not give the name %s: %s\n", kName,
                 error->message);
    return Claim::failed;
  }
  guint32 answer = 0;
  g_variant_get(reply.get(), "(u)", &answer);
  hasName_ = answer == kPrimaryOwner;
  if (hasName_) return Claim::granted;
  if (answer == kExists) return Claim::taken;
  std::fprintf(stderr, "kelvane: the session bus answers %u to a request for the name %s\n", answer,
               kName);
  return Claim::failed;
}

void ApplicationService::handle(const ExportedObject::Call& call) {
  if (call.method == "ActivateAction") {
    const char* name = nullptr;
    g_variant_get_child(call.arguments, 0, "&s", &name);
    const std::string action = name;
    if (action != kQuit && action != kPreferences) {
      g_dbus_method_invocation_return_error(call.invocation, G_DBUS_ERROR,
                                            G_DBUS_ERROR_INVALID_ARGS, "No action %s", name);
      return;
    }
    g_dbus_method_invocation_return_value(call.invocation, nullptr);
    handlers_.chooseAction(action);
    return;
  }
  g_dbus_method_invocation_return_value(call.invocation, nullptr);
  if (call.method == "Activate") handlers_.activate();
}

}  // namespace kelvane
