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

IntentService::IntentService(BusConnection* bus, MakeHandler makeHandler)
    : makeHandler_(std::move(makeHandler)) {
  static const BusInterfacePtr interface = parseInterface(kInterface);
  object_ = std::make_unique<ExportedObject>(
      bus, ApplicationService::kPath, *interface,
      ExportedObject::Handlers{[this](const ExportedObject::Call& call) { handle(call); },
                               nullptr});
}

// The interface has one method.
void IntentService::handle(const ExportedObject::Call& call) const {
  const GetBatteryDetailsIntent intent;
  const auto handler = makeHandler_(intent);
  if (!handler) {
    call.invocation.refuse(kFailed, "Kelvane is starting or ending");
    return;
  }
  handler->handleGetBatteryDetails(
      intent, [invocation = call.invocation](const GetBatteryDetailsIntentResponse& response) {
        invocation.answer(messageOf(response));
      });
}

}  // namespace kelvane
