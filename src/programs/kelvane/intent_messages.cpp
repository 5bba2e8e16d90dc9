#include "programs/kelvane/intent_messages.h"

#include <string_view>

#include "platform/linux/glib/glib_ptr.h"

namespace kelvane {
namespace {

void add(GVariantBuilder& dictionary, const char* key, GVariant* value) {
  g_variant_builder_add(&dictionary, "{sv}", key, value);
}

std::optional<BatteryCondition> conditionOfWord(std::string_view word) {
  for (std::int64_t raw = 0; const auto condition = batteryConditionOf(raw); ++raw)
    if (word == conditionWord(*condition)) return condition;
  return std::nullopt;
}

// Takes the properties of a message out, one by one.
struct Reader {
  GVariant* dictionary;
  bool isBroken = false;

  GVariantPtr value(const char* key, const GVariantType* type) {
    GVariantPtr found(g_variant_lookup_value(dictionary, key, nullptr));
    if (!found || g_variant_is_of_type(found.get(), type)) return found;
    isBroken = true;
    return nullptr;
  }
  std::optional<double> number(const char* key) {
    const GVariantPtr found = value(key, G_VARIANT_TYPE_DOUBLE);
    return found ? std::optional(g_variant_get_double(found.get())) : std::nullopt;
  }
};

}  // namespace

const char* conditionWord(BatteryCondition condition) {
  switch (condition) {
    case BatteryCondition::unknown:
      break;
    case BatteryCondition::good:
      return "good";
    case BatteryCondition::fair:
      return "fair";
    case BatteryCondition::poor:
      return "poor";
  }
  return "unknown";
}

GVariant* messageOf(const GetBatteryDetailsIntentResponse& response) {
  const BatteryDetails details = response.details.value_or(BatteryDetails{});
  GVariantBuilder dictionary;
  g_variant_builder_init(&dictionary, G_VARIANT_TYPE_VARDICT);
  if (const auto isConnected = details.isPowerAdapterConnected)
    add(dictionary, kIsPowerAdapterConnected, g_variant_new_boolean(*isConnected));
  if (const auto time = details.timeUntilFullOrDepleted)
    add(dictionary, kTimeUntilFullOrDepleted, g_variant_new_double(*time));
  if (const auto health = details.health) add(dictionary, kHealth, g_variant_new_double(*health));
  if (const auto condition = details.condition)
    add(dictionary, kCondition, g_variant_new_string(conditionWord(*condition)));
  return g_variant_new(kBatteryDetailsType, static_cast<gint32>(response.code), &dictionary);
}

std::optional<GetBatteryDetailsIntentResponse> responseOf(GVariant* message) {
  gint32 rawCode = 0;
  GVariant* rawDictionary = nullptr;
  g_variant_get(message, "(i@a{sv})", &rawCode, &rawDictionary);
  const GVariantPtr dictionary(rawDictionary);
  const auto code = responseCodeOf(rawCode);
  if (!code) return std::nullopt;

  BatteryDetails details;
  Reader reader{dictionary.get()};
  if (const auto isConnected = reader.value(kIsPowerAdapterConnected, G_VARIANT_TYPE_BOOLEAN))
    details.isPowerAdapterConnected = g_variant_get_boolean(isConnected.get());
  details.timeUntilFullOrDepleted = reader.number(kTimeUntilFullOrDepleted);
  details.health = reader.number(kHealth);
  if (const auto word = reader.value(kCondition, G_VARIANT_TYPE_STRING)) {
    details.condition = conditionOfWord(g_variant_get_string(word.get(), nullptr));
    if (!details.condition) return std::nullopt;
  }
  if (reader.isBroken) return std::nullopt;

  GetBatteryDetailsIntentResponse response(*code, std::nullopt);
  response.details = std::move(details);
  return response;
}

}  // namespace kelvane
