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

// A call to the bus itself.
BusReply callBus(BusConnection* bus, const char* method, GVariant* arguments) {
  return bus->callAndWait({"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus"},
                          method, arguments, "(u)", kBusTimeout);
}

}  // namespace

ApplicationService::ApplicationService(BusConnection* bus, Handlers handlers)
    : bus_(shareBus(bus)), handlers_(std::move(handlers)) {
  static const BusInterfacePtr interface = parseInterface(kInterface);
  object_ = std::make_unique<ExportedObject>(
      bus, kPath, *interface,
      ExportedObject::Handlers{[this](const ExportedObject::Call& call) { handle(call); },
                               nullptr});
}

ApplicationService::~ApplicationService() {
  if (!hasName_) return;
  // The answer comes after all that was sent before, the reply to a request to end included.
  callBus(bus_.get(), "ReleaseName", g_variant_new("(s)", kName));
}

ApplicationService::Claim ApplicationService::claim() {
  const BusReply reply =
      callBus(bus_.get(), "RequestName", g_variant_new("(su)", kName, kDoNotQueue));
  if (!reply) {
    std::fprintf(stderr, "kelvane: the session bus does not give the name %s: %s\n", kName,
                 reply.error.c_str());
    return Claim::failed;
  }
  guint32 answer = 0;
  g_variant_get(reply.value.get(), "(u)", &answer);
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
      call.invocation.refuse(kInvalidArguments, "No action " + action);
      return;
    }
    call.invocation.answer();
    handlers_.chooseAction(action);
    return;
  }
  call.invocation.answer();
  if (call.method == "Activate") handlers_.activate();
}

}  // namespace kelvane
