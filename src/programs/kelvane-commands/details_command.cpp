#include "programs/kelvane-commands/details_command.h"

#include <optional>
#include <ostream>
#include <utility>

#include <glib.h>
#include <nlohmann/json.hpp>

#include "battery/battery.h"
#include "intents/get_battery_details_intent_handler.h"
#include "platform/linux/application/application_service.h"
#include "platform/linux/desktop/linux_text_formats.h"
#include "platform/linux/glib/bus_connection.h"
#include "platform/linux/glib/glib_ptr.h"
#include "programs/kelvane-commands/power_reading.h"
#include "programs/kelvane/intent_messages.h"

namespace kelvane {
namespace {

constexpr int kAnswerTimeout = 1000;  // milliseconds
constexpr const char* kUnknown = "unknown";

// Absent unless it runs and answers as it should. Without a session bus nothing runs.
std::optional<BatteryDetails> askRunning() {
  const BusPtr bus = BusConnection::share(BusKind::session);
  if (!bus) return std::nullopt;
  const BusReply reply =
      bus->callAndWait({ApplicationService::kName, ApplicationService::kPath, kIntentsInterface},
                       kGetBatteryDetails, nullptr, kBatteryDetailsType, kAnswerTimeout);
  if (!reply) return std::nullopt;
  auto response = responseOf(reply.value.get());
  if (!response || response->code != GetBatteryDetailsIntentResponseCode::success)
    return std::nullopt;
  return std::move(response->details);
}

BatteryDetails readDetails(const PowerOptions& power) {
  PowerReading reading(power);
  const Battery battery(reading.registry, reading.powerSources, reading.loop);
  GetBatteryDetailsIntentHandler handler(reading.loop, [&]() -> const Battery& { return battery; });
  BatteryDetails details;
  handler.handleGetBatteryDetails({}, [&](const GetBatteryDetailsIntentResponse& response) {
    details = response.details.value_or(BatteryDetails{});
    reading.loop.terminate(0);
  });
  reading.loop.run();
  return details;
}

template <typename T>
nlohmann::ordered_json orNull(const std::optional<T>& value) {
  // A real that is not finite becomes null as it is written.
  return value ? nlohmann::ordered_json(*value) : nlohmann::ordered_json();
}

}  // namespace

std::string plainTextOf(const BatteryDetails& details, TextFormats& formats) {
  const auto isConnected = details.isPowerAdapterConnected;
  const auto time = details.timeUntilFullOrDepleted
                        ? formats.abbreviatedDuration(*details.timeUntilFullOrDepleted)
                        : std::nullopt;
  const auto health = details.health ? formats.percent(*details.health) : std::nullopt;
  const auto condition = details.condition.value_or(BatteryCondition::unknown);
  const char* adapter = !isConnected ? kUnknown : *isConnected ? "connected" : "not connected";
  const char* end = !isConnected ? "full or empty" : *isConnected ? "full" : "empty";
  return std::string("Power adapter: ") + adapter + "\nTime until " + end + ": " +
         time.value_or(kUnknown) + "\nHealth: " + health.value_or(kUnknown) +
         "\nCondition: " + conditionWord(condition);
}

std::string jsonOf(const BatteryDetails& details) {
  const auto condition =
      details.condition ? std::optional(conditionWord(*details.condition)) : std::nullopt;
  return nlohmann::ordered_json{{kIsPowerAdapterConnected, orNull(details.isPowerAdapterConnected)},
                                {kTimeUntilFullOrDepleted, orNull(details.timeUntilFullOrDepleted)},
                                {kHealth, orNull(details.health)},
                                {kCondition, orNull(condition)}}
      .dump();
}

int runDetailsCommand(const DetailsOptions& options, std::ostream& out) {
  std::optional<BatteryDetails> details;
  if (options.asksRunning) details = askRunning();
  if (!details) details = readDetails(options.power);
  LinuxTextFormats formats;
  out << (options.isJson ? jsonOf(*details) : plainTextOf(*details, formats)) << std::endl;
  return 0;
}

}  // namespace kelvane
