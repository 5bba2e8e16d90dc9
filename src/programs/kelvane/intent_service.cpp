#include "programs/kelvane/intent_service.h"

#include <string_view>
#include <utility>

#include "platform/linux/application/application_service.h"
#include "programs/kelvane/intent_messages.h"

namespace kelvane {
namespace {

constexpr const char* kInterface = R"xml(<node><interface name="org.kelvane.Kelvane.Intents">
  <method name="GetBatteryDetails">
    <arg name="code" type="i" direction="out"/>
    <arg name="details" type="a{sv}" direction="out"/>
  </method>
</interface></node>)xml";

}  // namespace

IntentService::IntentService(GDBusConnection* bus, MakeHandler makeHandler)
    : makeHandler_(std::move(makeHandler)) {
  static const GDBusNodeInfoPtr node = parseInterface(kInterface);
  object_ = std::make_unique<ExportedObject>(
      bus, ApplicationService::kPath, node->interfaces[0],
      ExportedObject::Handlers{[this](const ExportedObject::Call& call) { handle(call); },
                               [](std::string_view) -> GVariant* { return nullptr; }});
}

// The interface has one method.
void IntentService::handle(const ExportedObject::Call& call) const {
  const GetBatteryDetailsIntent intent;
  const auto handler = makeHandler_(intent);
  if (!handler) {
    g_dbus_method_invocation_return_error(call.invocation, G_DBUS_ERROR, G_DBUS_ERROR_FAILED,
                                          "Kelvane is starting or ending");
    return;
  }
  const std::shared_ptr<GDBusMethodInvocation> invocation(call.invocation, GObjectDeleter());
  handler->handleGetBatteryDetails(
      intent, [invocation](const GetBatteryDetailsIntentResponse& response) {
        // Takes a reference over.
        g_object_ref(invocation.get());
        g_dbus_method_invocation_return_value(invocation.get(), messageOf(response));
      });
}

}  // namespace kelvane
