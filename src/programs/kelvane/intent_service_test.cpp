#include "programs/kelvane/intent_service.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/application/application_service.h"
#include "platform/linux/glib/bus.h"
#include "platform/linux/glib/private_bus_test.h"
#include "programs/kelvane/intent_messages.h"

namespace kelvane {
namespace {

using ::testing::HasSubstr;

class IntentServiceTest : public ::testing::Test {
 protected:
  // Answers when the test says so.
  struct Handling : GetBatteryDetailsIntentHandling {
    explicit Handling(Completion& slot) : pending(slot) {}
    void handleGetBatteryDetails(const GetBatteryDetailsIntent&, Completion completion) override {
      pending = std::move(completion);
    }
    Completion& pending;
  };

  // `until` ends the waiting.
  void call(const char* arguments, const std::function<bool()>& until) {
    answer = "";
    calls.call(other.get(), {own->uniqueName(), ApplicationService::kPath, kIntentsInterface},
               kGetBatteryDetails, g_variant_new_parsed(arguments), kBatteryDetailsType,
               [this](const BusReply& reply) {
                 answer = reply ? GCharPtr(g_variant_print(reply.value.get(), FALSE)).get()
                                : "error: " + reply.error;
               });
    ASSERT_TRUE(runUntil(until));
  }
  const std::function<bool()> isAnswered = [this] { return !answer.empty(); };

  PrivateBus bus;
  BusPtr own = bus.connect();
  BusPtr other = bus.connect();
  BusCalls calls;
  bool hasApplication = true;
  GetBatteryDetailsIntentHandling::Completion pending;
  std::string answer;
  // As in the program: the object has another interface, too.
  ApplicationService application{own.get(), {}};
  IntentService service{own.get(), [this](const GetBatteryDetailsIntent&) {
                          return hasApplication ? std::make_unique<Handling>(pending) : nullptr;
                        }};
};

TEST_F(IntentServiceTest, AnswersWhenTheHandlerDoes) {
  call("()", [this] { return pending != nullptr; });
  runUntilIdle();
  EXPECT_EQ(answer, "");
  GetBatteryDetailsIntentResponse response(GetBatteryDetailsIntentResponseCode::success,
                                           std::nullopt);
  response.details = BatteryDetails{};
  response.details->health = 0.5;
  pending(response);
  ASSERT_TRUE(runUntil(isAnswered));
  EXPECT_EQ(answer, "(4, {'health': <0.5>})");
}

TEST_F(IntentServiceTest, OtherwiseAnError) {
  hasApplication = false;
  call("()", isAnswered);
  EXPECT_THAT(answer, HasSubstr("starting or ending"));
  hasApplication = true;
  call("('now',)", isAnswered);
  EXPECT_THAT(answer, HasSubstr("error: "));
  EXPECT_EQ(pending, nullptr);
}

}  // namespace
}  // namespace kelvane
