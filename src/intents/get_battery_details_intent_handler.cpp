#include "intents/get_battery_details_intent_handler.h"

#include <optional>
#include <string>
#include <utility>

#include "battery/battery.h"

namespace kelvane {
namespace {

// Not `batteryHealth()`, for which no verdict is a good one.
BatteryCondition conditionOf(const std::optional<std::string>& healthWord) {
  if (!healthWord) return BatteryCondition::unknown;
  if (*healthWord == "Fair") return BatteryCondition::fair;
  if (*healthWord == "Poor") return BatteryCondition::poor;
  return BatteryCondition::good;
}

GetBatteryDetailsIntentResponse makeResponse(const Battery& battery) {
  BatteryDetails details{
      {.identifier = "batteryDetails",
       .displayString =
           "Use the individual properties, for example, with the “Show Result” or “If” "
           "actions."}};
  details.isPowerAdapterConnected = battery.isPowerAdapterConnected();
  details.timeUntilFullOrDepleted = static_cast<double>(battery.timeRemaining()) * 60;
  details.health = battery.healthRatio();
  details.condition = conditionOf(battery.healthWord());
  GetBatteryDetailsIntentResponse response(GetBatteryDetailsIntentResponseCode::success,
                                           std::nullopt);
  response.details = std::move(details);
  return response;
}

}  // namespace

GetBatteryDetailsIntentHandler::GetBatteryDetailsIntentHandler(
    RunLoop& runLoop, std::function<const Battery&()> battery)
    : runLoop_(runLoop), battery_(std::move(battery)) {}

void GetBatteryDetailsIntentHandler::handleGetBatteryDetails(
    const GetBatteryDetailsIntent& /*intent*/, Completion completion) {
  runLoop_.async([battery = battery_, completion = std::move(completion)] {
    completion(makeResponse(battery()));
  });
}

std::unique_ptr<GetBatteryDetailsIntentHandling> makeHandlerFor(
    const Intent& intent, RunLoop& runLoop, std::function<const Battery&()> battery) {
  if (!dynamic_cast<const GetBatteryDetailsIntent*>(&intent)) return nullptr;
  return std::make_unique<GetBatteryDetailsIntentHandler>(runLoop, std::move(battery));
}

}  // namespace kelvane
