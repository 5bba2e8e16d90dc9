#include "programs/kelvane/intent_messages.h"

#include <cmath>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "platform/linux/glib/glib_ptr.h"

namespace kelvane {
namespace {

using Code = GetBatteryDetailsIntentResponseCode;

std::optional<GetBatteryDetailsIntentResponse> parsed(const char* text) {
  return responseOf(sinkVariant(g_variant_new_parsed(text)).get());
}

std::string printed(const GetBatteryDetailsIntentResponse& response) {
  const GVariantPtr message = sinkVariant(messageOf(response));
  EXPECT_STREQ(g_variant_get_type_string(message.get()), kBatteryDetailsType);
  return GCharPtr(g_variant_print(message.get(), FALSE)).get();
}

TEST(IntentMessages, WhatIsNotKnownIsLeftOut) {
  GetBatteryDetailsIntentResponse response(Code::failure, std::nullopt);
  EXPECT_EQ(printed(response), "(5, {})");
  response.details = BatteryDetails{};
  EXPECT_EQ(printed(response), "(5, {})");
}

TEST(IntentMessages, AreReadBack) {
  for (const char* text :
       {"(4, {'isPowerAdapterConnected': <true>, 'timeUntilFullOrDepleted': <-60.0>, "
        "'health': <0.75>, 'condition': <'poor'>})",
        "(4, {'health': <inf>, 'condition': <'good'>})",
        "(0, {'isPowerAdapterConnected': <false>, 'condition': <'unknown'>})"}) {
    const auto response = parsed(text);
    ASSERT_TRUE(response) << text;
    EXPECT_EQ(printed(*response), text);
  }
  EXPECT_TRUE(std::isnan(parsed("(4, {'health': <nan>})")->details->health.value()));
  EXPECT_EQ(printed(*parsed("(4, {'Health': <1>, 'condition': <'fair'>})")),
            "(4, {'condition': <'fair'>})");
}

TEST(IntentMessages, BrokenOnesAreNone) {
  for (const char* text : {
           "(-1, @a{sv} {})",
           "(7, @a{sv} {})",
           "(4, {'isPowerAdapterConnected': <1>})",
           "(4, {'timeUntilFullOrDepleted': <int64 5700>})",
           "(4, {'health': <'0.75'>})",
           "(4, {'health': <<0.75>>})",
           "(4, {'condition': <1>})",
           "(4, {'condition': <''>})",
           "(4, {'condition': <'Good'>, 'health': <0.75>})",
       })
    EXPECT_FALSE(parsed(text)) << text;
}

}  // namespace
}  // namespace kelvane
